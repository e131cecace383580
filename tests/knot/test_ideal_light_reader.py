"""The lighter reader of ideal blocks, through the evaluator that uses it."""

import math

import _native
import pytest

pytestmark = pytest.mark.skipif(not hasattr(_native, "ParticleEvaluator"), reason="needs ParticleEvaluator")


@pytest.fixture
def filaments(tmp_path, monkeypatch):
    """The filaments of a body, placed in an AB block where the catalogue's search comes to it last."""
    path = tmp_path / "ideal.txt"
    monkeypatch.setenv("VKM_IDEAL_TXT", str(path))

    def read(body, resolution=6, head='<AB Id="97:1:1"', tail="</AB>"):
        path.write_text(f"{head}>{body}{tail}")
        return _native.ParticleEvaluator("97:1:1", resolution).get_filaments()

    return read


def curve(rows, resolution=6):
    """r(t) = A_0 + sum A_k cos(k t) + B_k sin(k t), t = i 2 pi / resolution."""
    points = []
    for i in range(resolution):
        t = i * 6.283185307179586 / resolution
        r = list(rows.get(0, [(0.0,) * 3])[0])
        for k in sorted(set(rows) - {0}):
            r = [x + (a * math.cos(k * t) + b * math.sin(k * t)) for x, a, b in zip(r, *rows[k], strict=True)]
        points.append(r)
    return points


A, B = (1.0, 2.0, 3.0), (4.0, 5.0, 6.0)


@pytest.mark.parametrize(
    ("body", "rows"),
    [
        ('<Coeff I="2" B="4,5,6" A="1,2,3"/>', {2: (A, B)}),  # any order
        ('<Coeff A=" 1, 2,\t3x" B="4,5,6" />', {1: (A, B)}),  # harmonic 1 unless given
        ('<Coeff I="0" A="1,2,3" B="4,5,6"/>', {0: (A, B)}),  # B of row 0 does not enter
        ('<Coeff I=" 19" A="1,2,3" B="4,5,6"/><Coeff I="20" A="9,9,9" B="9,9,9"/>', {19: (A, B)}),
        ('<Coeff I="1" A="1 2 3" B="4,5,6"/><Coeff I="1" A="1 ,2,3" B="4,5,6"/>', {}),  # commas, right behind
        ('<Coeff I="-1" A="1,2,3" B="4,5,6"/><Coeff I="99999999999" A="1,2,3" B="4,5,6"/>', {}),
        ('<Coeff I="1" A="1,2,3"/><Coeff I="1" B="1,2,3"/>', {}),
        ('<Coeff I="1" A="9,9,9" B="9,9,9"/><Coeff I="1" A="1,2,3" B="4,5,6"/>', {1: (A, B)}),
        (
            '<STRING I="1"><Coeff I="1" A="1,2,3" B="4,5,6"/></STRING><Coeff I="2" A="1,2,3" B="0x4,5,6"/>',
            {1: (A, B), 2: (A, B)},
        ),
        ('<Coeff I="1" A="1,2,3" B="4,5,6"/><Coeff I="2" A="1,2,3" B="4,5,6">', {1: (A, B)}),
        ('<Component I="1"><Coeff I="3" A="1,2,3" B="4,5,6"/>', {3: (A, B)}),  # the first without an end: one part
    ],
)
def test_rows(filaments, body, rows):
    assert filaments(body) == [curve(rows)]


def test_parts_and_resolutions(filaments):
    part = '<Component><Coeff I="{0}" A="1,2,3" B="4,5,6"/></Component>'.format
    body = part(1) + '<Coeff I="5" A="1,2,3" B="4,5,6"/>' + part(2) + "<Component>"
    assert filaments(body) == [curve({1: (A, B)}), curve({2: (A, B)})]
    assert filaments(body, 3) == [curve({1: (A, B)}, 3), curve({2: (A, B)}, 3)]
    assert filaments(body, 0) == filaments(body, -4) == [[], []]
    with pytest.raises(MemoryError):
        filaments(part(1) * 1000, 2**31 - 1)


def test_only_a_head_that_begins_with_the_id(filaments):
    with pytest.raises(RuntimeError, match=r"97:1:1 niet gevonden in database\.$"):
        filaments("", head='<AB L="1" Id="97:1:1"')
