"""What the wind did: levels without their tide."""

import subprocess

import gauge
import pandas as pd

levels = gauge.open("cuxhaven").levels(days=30)
prediction = subprocess.run(
    ["harmonics", "predict", "--days", "0"],
    input=levels.to_csv(sep="\t", header=False),
    capture_output=True,
    check=True,
    text=True,
)
tide = pd.read_csv(pd.io.common.StringIO(prediction.stdout), sep="\t", index_col=0)
(levels["metres"] - tide.iloc[:, 0]).plot(title="Surge, Cuxhaven")
