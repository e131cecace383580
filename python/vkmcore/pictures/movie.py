"""Movies of a simulation: a GIF or an MP4 of tubes. Needs matplotlib and Pillow; MP4 needs imageio-ffmpeg.

Axes, panes and labels are drawn once. On a copy of them each frame's tubes are laid as triangles with a colour a
corner, those that face away left out and the others from the farthest to the nearest.
"""

from __future__ import annotations

import base64
import io
import tempfile
from collections.abc import Callable, Iterator, Sequence
from dataclasses import dataclass
from pathlib import Path
from typing import TYPE_CHECKING, Any

import numpy as np

from vkmcore.curves.tube_surface import ring_triangles, tube_rings
from vkmcore.errors import PlotError
from vkmcore.files import write_bytes
from vkmcore.pictures.figure import PALETTE, check_plot_target
from vkmcore.pictures.simulation import GHOST, TUBE, box_diagonal, stage
from vkmcore.pictures.tubes import SIDES, shade, thinned

if TYPE_CHECKING:
    from numpy.typing import NDArray

    from vkmcore.dynamics.trajectory import Frame

    Points = NDArray[np.float64]
    Picture = NDArray[np.uint8]

KINDS = ("gif", "mp4")
INCHES, DPI = 4.4, 100
RINGS = 160  # most rings along a tube


@dataclass(frozen=True, repr=False)
class Movie:
    """A movie in memory. A notebook plays it; `save` writes it."""

    data: bytes
    kind: str  # "gif" or "mp4"
    frames: int

    def __repr__(self) -> str:
        return f"Movie({self.frames} frames, {self.kind}, {len(self.data) / 1024:.0f} kB)"

    def _repr_html_(self) -> str:
        text = base64.b64encode(self.data).decode()
        if self.kind == "gif":
            return f'<img src="data:image/gif;base64,{text}" alt="movie of {self.frames} frames">'
        return f'<video controls loop autoplay muted src="data:video/mp4;base64,{text}"></video>'

    def save(self, path: str | Path) -> None:
        """Write the movie as it is. OSError if the file cannot be written."""
        write_bytes(path, self.data)


def check_movie_target(path: Path) -> str:
    """Find out before the work whether a movie can go to `path`; returns its kind, "gif" or "mp4".

    Raises:
        PlotError: it cannot; the text says why.
    """
    kind = path.suffix.lower()[1:]
    if kind not in KINDS:
        raise PlotError(f"{path}: movies are .gif and .mp4 files")
    check_plot_target(path.with_suffix(".png"))
    if path.is_dir():
        raise PlotError(f"{path}: is a directory")
    _check_encoder(kind)
    return kind


def _check_encoder(kind: str) -> None:
    try:
        if kind == "gif":
            import PIL  # noqa: F401
        else:
            import imageio_ffmpeg  # noqa: F401
    except ImportError as error:
        brings = "Pillow: pip install vkmcore[plot]" if kind == "gif" else "imageio-ffmpeg: pip install vkmcore[movie]"
        raise PlotError(f".{kind} movies need {brings} ({error})") from error


def film_run(
    frames: Sequence[Frame],
    ghosts: Sequence[bool],
    title: str,
    *,
    kind: str = "gif",
    frames_per_second: int = 15,
    tell: Callable[[int], None] = lambda number: None,
) -> Movie:
    """Draw every frame as tubes; `tell` hears the number of frames done.

    Raises:
        PlotError: matplotlib, Pillow or imageio-ffmpeg is missing; the text names the extra.
    """
    check_plot_target(Path("movie.png"))
    _check_encoder(kind)

    def counted() -> Iterator[Picture]:
        for number, picture in enumerate(_pictures(frames, ghosts, title), start=1):
            yield picture
            tell(number)

    encode = _gif if kind == "gif" else _mp4
    return Movie(encode(counted(), frames_per_second), kind, len(frames))


def _pictures(frames: Sequence[Frame], ghosts: Sequence[bool], title: str) -> Iterator[Picture]:
    """The frames as arrays (height, width, 3)."""
    from matplotlib.colors import to_rgb

    figure, axes = stage(frames, title, INCHES, DPI)
    radius = TUBE * box_diagonal(axes)
    canvas: Any = figure.canvas
    heading = figure.texts[0]
    heading.set_visible(False)
    canvas.draw()
    empty = canvas.copy_from_bbox(figure.bbox)
    heading.set_visible(True)
    renderer = canvas.get_renderer()
    bases = [np.array(to_rgb(GHOST if ghost else PALETTE[n % len(PALETTE)])) for n, ghost in enumerate(ghosts)]
    for frame in frames:
        canvas.restore_region(empty)
        tubes = [
            _tube(axes, thinned(points, RINGS), 0.5 * radius if ghost else radius, base)
            for points, ghost, base in zip(frame.points, ghosts, bases, strict=True)
            if len(points) >= 3
        ]
        _lay(renderer, tubes)
        heading.set_text(f"{title}   t = {frame.time:.2f} s".strip())
        heading.draw(renderer)
        yield np.asarray(canvas.buffer_rgba())[..., :3].copy()


def _tube(axes: Any, points: Points, radius: float, base: Points) -> tuple[Points, Points, Points]:
    """The triangles of a tube that face the viewer: corners in pixels (T, 3, 2), colours (T, 3, 4), depths (T,)."""
    from mpl_toolkits.mplot3d.proj3d import proj_transform

    rings, outward = tube_rings(points, radius, SIDES)
    x, y, depth = (np.asarray(row, dtype=np.float64) for row in proj_transform(*rings.reshape(-1, 3).T, axes.M))
    pixels = axes.transData.transform(np.column_stack([x, y]))
    triangles = ring_triangles(len(points), SIDES)
    corners = pixels[triangles]
    one, other = corners[:, 1] - corners[:, 0], corners[:, 2] - corners[:, 0]
    seen = one[:, 0] * other[:, 1] > one[:, 1] * other[:, 0]  # counterclockwise from outside, so from here
    colours = np.column_stack([shade(base, outward.reshape(-1, 3)), np.ones(len(pixels))])
    return corners[seen], colours[triangles[seen]], depth[triangles[seen]].sum(axis=1)


def _lay(renderer: Any, tubes: list[tuple[Points, Points, Points]]) -> None:
    if not tubes:
        return
    from matplotlib.transforms import IdentityTransform

    corners, colours, depths = (np.concatenate(parts) for parts in zip(*tubes))
    order = np.argsort(-depths, kind="stable")
    renderer.draw_gouraud_triangles(renderer.new_gc(), corners[order], colours[order], IdentityTransform())


def _gif(pictures: Iterator[Picture], frames_per_second: int) -> bytes:
    """A GIF that repeats, of one palette: that of the first picture, for all have the same colours in other places."""
    from PIL import Image

    first = next(pictures)
    palette = Image.fromarray(first).quantize(255, dither=Image.Dither.NONE)
    # The palette's nearest entry for each colour of five bits a channel, looked up once.
    level = np.linspace(0.0, 255.0, 32).round().astype(np.uint8)
    cube = np.stack(np.meshgrid(level, level, level, indexing="ij"), axis=-1).reshape(256, 128, 3)
    nearest = np.asarray(Image.fromarray(cube).quantize(palette=palette, dither=Image.Dither.NONE)).ravel()

    def indexed(picture: Picture) -> Any:
        bits = picture.astype(np.uint16) >> 3
        image = Image.fromarray(nearest[(bits[..., 0] << 10) | (bits[..., 1] << 5) | bits[..., 2]])
        image.putpalette(palette.getpalette() or [])
        return image

    file = io.BytesIO()
    rest = (indexed(picture) for picture in pictures)
    duration = round(1000 / frames_per_second)
    indexed(first).save(file, "GIF", save_all=True, append_images=rest, duration=duration, loop=0, optimize=False)
    return file.getvalue()


def _mp4(pictures: Iterator[Picture], frames_per_second: int) -> bytes:
    """H.264 in four-two-zero chroma, which every browser plays."""
    from imageio_ffmpeg import write_frames

    first = next(pictures)
    height, width = first.shape[:2]
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "movie.mp4"
        writer = write_frames(str(path), (width, height), fps=frames_per_second, macro_block_size=2, quality=7)
        writer.send(None)
        try:
            writer.send(first)
            for picture in pictures:
                writer.send(np.ascontiguousarray(picture))
        finally:
            writer.close()
        return path.read_bytes()
