#!/usr/bin/env python3
"""Compares our frames of animated SVG files with a browser's.

    compare.py DRAW_FRAMES [FILE.svg...]

DRAW_FRAMES is the program of that name from a build with LUMENFOLD_BENCH. Needs chromium and
ImageMagick. Without files it takes the samples beside it and the application's moving icons. Prints
the mean difference of the pixels of each file, from 0 (the same) to 1, and fails above LIMIT. The
pictures stay in ./browser-comparison. Only what our subset and CSS agree on can be compared: timing
keywords other than "linear" and transforms that turn between keyframes differ by design.
"""

import html
import pathlib
import re
import shutil
import subprocess
import sys

SIZE = 96
TIMES = [100, 350, 600, 850, 1300]  # milliseconds
LIMIT = 0.01

HERE = pathlib.Path(__file__).resolve().parent
OUT = pathlib.Path("browser-comparison")

# Puts everything that moves at one time, both kinds of animation alike.
FREEZE = """<script>
onload = () => {
  const svg = document.querySelector('svg');
  svg.pauseAnimations();
  svg.setCurrentTime(%f);
  for (const animation of document.getAnimations()) {
    animation.pause();
    animation.currentTime = %d;
  }
};
</script>"""


def cell(svg: str, ms: int) -> str:
    sized = re.sub(r'width="\d+" height="\d+"', f'width="{SIZE}" height="{SIZE}"', svg, count=1)
    page = f"<style>body{{margin:0;overflow:hidden}}svg{{display:block}}</style>{sized}"
    page += FREEZE % (ms / 1000, ms)
    return f'<iframe width="{SIZE}" height="{SIZE}" srcdoc="{html.escape(page)}"></iframe>'


def browser_picture(files: list[pathlib.Path], picture: pathlib.Path) -> None:
    rows = ["".join(cell(file.read_text(), ms) for ms in TIMES) for file in files]
    page = OUT / "page.html"
    page.write_text(
        "<style>body{margin:0;line-height:0;background:white}iframe{border:0}div{white-space:nowrap}"
        "</style>" + "".join(f"<div>{row}</div>" for row in rows)
    )
    browser = shutil.which("chromium") or sys.exit("chromium is not installed")
    # The window is higher than the page: some versions cut its lower end off.
    subprocess.run(
        [browser, "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
         "--force-device-scale-factor=1", "--virtual-time-budget=3000",
         f"--window-size={SIZE * len(TIMES)},{SIZE * len(files) + 200}",
         f"--screenshot={picture.resolve()}", page.resolve().as_uri()],
        check=True, capture_output=True)


def difference(ours: pathlib.Path, theirs: pathlib.Path, row: int) -> float:
    area = f"{SIZE * len(TIMES)}x{SIZE}+0+{SIZE * row}"
    result = subprocess.run(
        ["compare", "-metric", "MAE", "-extract", area, str(ours), str(theirs), "null:"],
        capture_output=True, text=True)
    return float(re.search(r"\(([\d.e-]+)\)", result.stderr).group(1))


def main() -> int:
    if len(sys.argv) < 2:
        print(__doc__)
        return 2
    files = [pathlib.Path(name) for name in sys.argv[2:]]
    if not files:
        root = HERE.parents[2]
        files = sorted((HERE / "samples").glob("*.svg"))
        files += [root / f"{name}.svg"
                  for name in ("icons/spinner", "icons/building", "ext/corvel/icons/update")]
    OUT.mkdir(exist_ok=True)
    ours, theirs = OUT / "ours.png", OUT / "browser.png"
    subprocess.run([sys.argv[1], str(ours), str(SIZE), ",".join(map(str, TIMES)), *map(str, files)],
                   check=True)
    browser_picture(files, theirs)
    worst = 0.0
    for row, file in enumerate(files):
        value = difference(ours, theirs, row)
        worst = max(worst, value)
        print(f"{value:.5f}  {file.stem}")
    return 0 if worst <= LIMIT else 1


if __name__ == "__main__":
    sys.exit(main())
