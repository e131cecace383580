"""The readers of texts and files, fed with changed inputs: bits flipped, pieces cut and doubled, words that trip."""

from __future__ import annotations

import hashlib
from typing import TYPE_CHECKING, Any

import _native

if TYPE_CHECKING:
    from fuzz.values import Values

WORDS = (
    b"1e999", b"-1e999", b"nan", b"inf", b"0x1p3", b"1" * 400, b"99999999999999999999", b"-", b"+", b".", b"e", b"\0",
    b"%", b"\n\n", b"\r\n", b"\xff\xfe", b"\"", b"<", b">", b"<AB Id=\"", b"</AB>", b"<Component", b"</Component>",
    b"<Coeff I=\"", b"A=\"1,2,3\"", b"<STRING", b"I=\"-5\"", b"I=\"2147483648\"", b"n=\"0\"", b"\t", b" " * 300,
)  # fmt: skip


def mutated(values: Values, text: bytes) -> bytes:
    """Some changes at places of the text's own choosing."""
    random = values.random
    data = bytearray(text)
    for _ in range(random.choice((1, 1, 2, 4, 16))):
        at = random.randrange(len(data) + 1)
        end = min(len(data), at + random.choice((1, 2, 8, 64, 512)))
        change = random.randrange(5)
        if change == 0 and at < len(data):
            data[at] ^= 1 << random.randrange(8)
        elif change == 1:
            del data[at:end]
        elif change == 2:
            data[at:at] = data[at:end]
        elif change == 3:
            data[at:at] = random.choice(WORDS)
        else:
            del data[at:]
    return bytes(data)


def mutated_input(values: Values) -> tuple[str, str]:
    """A reader's name and its answer to a changed text, as text."""
    from fuzz.calls import ALLOWED_SECONDS, EXPECTED, Stopped, alarm, digest

    random = values.random
    source = random.choice(("knot.fseries", "legacy.fseries", "ideal.txt"))
    data = mutated(values, (values.folder / source).read_bytes())
    path = values.folder / "mutated"
    path.write_bytes(data)
    text = data.decode("utf-8", "replace")
    loaded = _native.fourier_knot()

    def load() -> Any:
        loaded.loadBlocks(str(path))
        return loaded.blocks

    def canonicalize() -> Any:
        result = _native.canonicalize_fseries_file_inplace(str(path))
        return result, hashlib.sha256(path.read_bytes()).hexdigest()

    readers = {
        "parse_fseries_from_string": lambda: _native.parse_fseries_from_string(text),
        "parse_fseries_multi": lambda: _native.parse_fseries_multi(str(path)),
        "loadBlocks": load,
        "canonicalize_fseries_file_inplace": canonicalize,
        "sample_curve_centered": lambda: _native.sample_curve_centered(str(path), 16),
        "parse_ideal_txt_from_string": lambda: _native.parse_ideal_txt_from_string(text),
        "parse_ideal_halvard_from_string": lambda: _native.parse_ideal_halvard_from_string(text),
        "parse_ideal_txt_multi": lambda: _native.parse_ideal_txt_multi(str(path)),
        "parse_ideal_ab_by_id_from_string": lambda: _native.parse_ideal_ab_by_id_from_string(text, "3:1:1"),
        "check_kind_from_export_string": lambda: _native.check_kind_from_export_string(text),
        "fingerprint_hex": lambda: _native.PipelineProvenanceAPI.fingerprint_hex(text),
    }
    name = random.choice(sorted(readers))
    try:
        with alarm(ALLOWED_SECONDS):
            return name, digest(readers[name]())
    except Stopped:
        return name, "stopped"
    except EXPECTED as error:
        return name, f"{type(error).__name__}: {str(error)[:60]}".replace(str(values.folder), "")
