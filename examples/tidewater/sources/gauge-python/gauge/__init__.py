"""Water levels as data frames."""

from ._core import frame, open

__all__ = ["frame", "open"]
