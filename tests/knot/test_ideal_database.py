"""The ideal database: its parsers against Python's own regular expressions, and the evaluation of components."""

import math
import os
import random
import re

import _native
import numpy as np
import pytest

UNLINK = """<DATA n="7">
<AB Id="0:1:1" Conway="0" L="6.283185" D=" 1.000000">
  <Coeff I="  1" A=" 1.000000, 0.000000, 0.000000" B=" 0.000000, 1.000000, 0.000000" />
</AB> noise <Coeff I="9" A="1,1,1" B="1,1,1"/>
<AB Id="0:1:2" Conway="0" L="12.0" D="1.0" n="2">
  <Component I="1">
    <Coeff I="0" A="-1.5, 0.0, 0.0" B=" 0.0, 0.0, 0.25" />
    <Coeff I="1" A=" 1.0, 0.0, 0.0" B=" 0.0, 1.0, 0.0" />
  </Component>
  <Component I="2">
    <Coeff I="0" A=" 1.5, 0.0, 0.0" B=" 0.0, 0.0, 0.0" />
    <Coeff I="1" A=" 1.0, 0.0, 0.0" B=" 0.0, 1.0, 0.0" />
  </Component>
</AB>
</DATA>"""
COLUMNS = ("a_x", "a_y", "a_z", "b_x", "b_y", "b_z")


def parse(text):
    return _native.parse_ideal_halvard_from_string(text)


def one(text):
    (block,) = parse(text)
    return block


def harmonics(component):
    """{harmonic: (A, B)} of the rows that are not zero."""
    table = np.array([getattr(component.fourier, name) for name in COLUMNS]).T.reshape(-1, 6)
    rows = {i + 1: (tuple(row[:3]), tuple(row[3:])) for i, row in enumerate(table.tolist()) if any(row)}
    return len(table), rows


def body_rows(body):
    return harmonics(one(f'<AB Id="x">{body}</AB>').components[0])


def test_blocks_and_components():
    circle, unlink = _native.parse_ideal_txt_from_string(UNLINK)
    assert (circle.id, circle.conway, circle.L, circle.D, circle.n) == ("0:1:1", "0", 6.283185, 1.0, 1)
    assert [c.component_index for c in circle.components] == [1]
    assert harmonics(circle.components[0]) == (1, {1: ((1, 0, 0), (0, 1, 0))})
    assert [(c.component_index, c.A0, c.B0) for c in unlink.components] == [
        (1, [-1.5, 0, 0], [0, 0, 0.25]),
        (2, [1.5, 0, 0], [0, 0, 0]),
    ]
    assert (unlink.n, unlink.source_tag, unlink.fourier.header) == (2, "AB", "% ideal component")
    header = 'AB Id="0:1:1" Conway="0" L="6.283185" D="1.000000" n="1"'
    assert _native.format_ideal_ab_header(circle) == header
    blocks = [circle, unlink]
    assert [_native.index_of_ideal_id(blocks, name) for name in ("0:1:2", "0:1", "")] == [1, -1, -1]
    assert _native.index_of_ideal_id([], "x") == -1
    circle.fourier.header = "in place"
    assert circle.fourier.header == "in place"


@pytest.mark.parametrize(
    ("head", "expected"),
    [
        ('Id="x" L="abc"', ("x", "", 0, 0, 1)),
        ('Id="x" L=" 1.5e1abc" D="\t0x10\n"', ("x", "", 15, 16, 1)),
        ('Id="x" L="1e999" D="1e-320"', ("x", "", 0, 0, 1)),
        ('XL="3" L="4" Id="" Id="y"', ("y", "", 3, 0, 1)),
        ('L="" D="2', ("", "", 0, 0, 1)),
        ('Conway="" Conway="2" n="0"', ("", "", 0, 0, 1)),
        ('n="-3"', ("", "", 0, 0, 1)),
        ('n=" +5x"', ("", "", 0, 0, 5)),
        ('n="99999999999"', ("", "", 0, 0, 1)),
        ('span="4" n="2"', ("", "", 0, 0, 4)),
        ('Id="a\nb é" L="-inf"', ("a\nb é", "", -math.inf, 0, 1)),
    ],
)
def test_attributes_fall_back(head, expected):
    block = one(f"<AB {head}></AB>")
    assert (block.id, block.conway, block.L, block.D, block.n) == expected
    assert len(block.components) == 1 and block.components[0].fourier.a_x == []


@pytest.mark.parametrize(
    ("body", "expected"),
    [
        ('<Coeff I="1" A="1 2 3" B="4,5\t6"/>', (1, {1: ((1, 2, 3), (4, 5, 6))})),
        ('<Coeff\nI="\t3"\fA="1,,2 3 9" B="0 0 0 x" >', (3, {3: ((1, 2, 3), (0, 0, 0))})),
        ('<Coeff I="1" B="4,5,6" A="1,2,3"/>', (0, {})),
        ('<Coeff I="1" A="1,2" B="4,5,6"/><Coeff I="2" A="1,2,3" B="4,5,nan"/>', (0, {})),
        ('<Coeff I="1 " A="1,2,3" B="4,5,6"/><CoeffI="2" A="1,2,3" B="4,5,6"/>', (0, {})),
        ('<Coeff I="-1" A="1,2,3" B="4,5,6"/><Coeff I="2"A="1,2,3" B="4,5,6"/>', (0, {})),
        ('<Coeff I="2" A="1,2,3" B="4,5,6"/><Coeff I="2" A="7,8,9" B="0,0,0"/>', (2, {2: ((7, 8, 9), (0, 0, 0))})),
        ('<Coeff I="1" A="<Coeff I="2" A="1,2,3" B="4,5,6"/>', (2, {2: ((1, 2, 3), (4, 5, 6))})),
    ],
)
def test_rows(body, expected):
    assert body_rows(body) == expected


def test_layouts_of_components():
    row = '<Coeff I="{0}" A="{0},0,0" B="0,0,0"/>'.format
    strings = one(f'<TL Id="L">{row(9)}<STRING I="4" L="1">{row(1)}<STRING>{row(2)}</STRING>{row(8)}<STRING</TL>')
    assert [(c.component_index, list(harmonics(c)[1])) for c in strings.components] == [(4, [1]), (0, [2])]
    assert strings.source_tag == "TL" and strings.fourier.a_x == [1.0]
    mixed = one(f'<HT Id="K"><Components I="3">{row(1)}</Component><Component>{row(2)}</Component>{row(7)}</HT>')
    assert [(c.component_index, list(harmonics(c)[1])) for c in mixed.components] == [(0, [2])]
    assert harmonics(one(f"<AB><STRING {row(1)[:-2]}</AB>").components[0]) == (0, {})


def test_order_of_tags_and_unterminated_blocks():
    text = '<TL Id="a"></TL><AB Id="b"></AB><HT Id="c"></HT><ABC Id="d"></AB><AB Id="e"><TL Id="f"></TL>'
    found = [(b.source_tag, b.id) for b in parse(text)]
    assert found == [("AB", "b"), ("AB", "d"), ("HT", "c"), ("TL", "a"), ("TL", "f")]
    assert [b.id for b in _native.parse_ideal_txt_from_string(text)] == ["b", "d"]
    assert _native.parse_ideal_txt_from_string("<HT></HT>") == []


@pytest.mark.parametrize("row", ['<Coeff I="99999999999" A="1" B="x"/>', '<Component I="2147483648"></Component>'])
def test_too_large_integers_escape(row):
    with pytest.raises(IndexError, match=r"^stoi argument out of range$"):
        parse(f"<AB>{row}</AB>")


@pytest.mark.parametrize("text", ["<AB>{}</AB><TL>{}</TL>", "<HT><STRING>{}<STRING>{}</HT>"])
def test_absurd_memory_is_refused_for_the_whole_text(text):
    half = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") // 2
    largest = half // (2 * 6 * 8)  # harmonics that one series may have, by itself
    if largest >= 2**31:
        pytest.skip("more memory than a series can take")
    row = '<Coeff I="{}" A="1,2,3" B="4,5,6"/>'.format
    with pytest.raises(MemoryError):
        parse(text.format(row(1), row(largest)))


def test_one_block_by_id():
    assert _native.parse_ideal_ab_by_id_from_string(UNLINK, "0:1:2").n == 2
    for text, name in ((UNLINK, "0:1"), ('<AB Id="x">', "x"), ("", "")):
        with pytest.raises(RuntimeError, match=rf"^parse_ideal_ab_by_id_from_string: AB Id not found: {name}$"):
            _native.parse_ideal_ab_by_id_from_string(text, name)


def test_file(tmp_path):
    path = tmp_path / "ideal.txt"
    path.write_text(UNLINK)
    assert [block.id for block in _native.parse_ideal_txt_multi(str(path))] == ["0:1:1", "0:1:2"]
    with pytest.raises(RuntimeError, match=r"^parse_ideal_txt_multi: cannot open file: nowhere$"):
        _native.parse_ideal_txt_multi("nowhere")


def test_evaluation_adds_both_offsets():
    (_, unlink) = parse(UNLINK)
    s = np.linspace(0, 6, 5)
    left, right = _native.evaluate_ideal_ab_components(unlink, s)
    circle = np.stack([np.cos(s), np.sin(s), 0 * s], axis=1)
    np.testing.assert_allclose(left, circle + np.array([-1.5, 0, 0.25]), atol=1e-15)
    np.testing.assert_allclose(right, circle + np.array([1.5, 0, 0]), atol=1e-15)
    assert (_native.evaluate_ideal_component(unlink.components[0], s) == left).all()
    assert (_native.evaluate_ideal_component(one("<AB></AB>").components[0], s) == 0).all()
    for wrong in (np.zeros((2, 2)), 1.0):
        with pytest.raises(ValueError, match=r"^s must be 1D$"):
            _native.evaluate_ideal_component(unlink.components[0], wrong)
        with pytest.raises(ValueError, match=r"^s must be 1D$"):
            _native.evaluate_ideal_ab_components(unlink, wrong)


# The grammar, as expressions on bytes: \s and \b know the same letters as the library's.
COMPONENT = re.compile(rb"<Component\b([^>]*)>([\s\S]*?)</Component>")
NUMBER = re.compile(rb'I="\s*([0-9]+)\"')
ROW = re.compile(rb'<Coeff\s+I="\s*([0-9]+)\"\s+A="([^"]+)\"\s+B="([^"]+)\"\s*/?>')
ATTRIBUTES = [re.compile(x) for x in (rb'Id="([^"]+)"', rb'Conway="([^"]*)"', rb'L="([^"]+)"', rb'n="([^"]+)"')]


def expected_components(body):
    parts = [(b"<Component" + m[1] + b">", m[2]) for m in COMPONENT.finditer(body)]
    for tag, text in parts or [(b'<Component I="1">', body)]:
        number = NUMBER.search(tag)
        rows = {}
        for match in ROW.finditer(text):
            try:
                a, b = (tuple([float(x) for x in part.replace(b",", b" ").split()[:3]]) for part in match.groups()[1:])
            except ValueError:
                continue
            if len(a) == len(b) == 3:
                rows[int(match[1])] = (a, b)
        top = max([0, *rows])
        yield int(number[1]) if number else 0, top, {k: row for k, row in rows.items() if k and any(row[0] + row[1])}


PIECES = [
    "<Component",
    "</Component>",
    '<Component I="2">',
    ">",
    "/>",
    "<",
    '"',
    " ",
    "\n",
    "_",
    "é",
    "x",
    "7",
    'I="',
    'I=" 3"',
    'A="',
    'B="',
    "<Coeff",
    ' A="1, 2,3"',
    ' B="4 5 6"',
    '<Coeff I="1" A="1,2,3" B="4,5,6"/>',
    '<Coeff I="2"  A="1,2,3"',
    '<Coeff I="  12" A="1 2 3 4" B="x,1,2" />',
    '<Coeff\tI="4"\vA="1,2,3" B="1,1,1" >',
]
HEAD_PIECES = ["Id", "Conway", "XL", "L", "n", "Column", '="', '="4"', '""', '"', " ", "=", "7", "\n"]


@pytest.mark.parametrize("seed", range(4))
def test_matchers_agree_with_regular_expressions(seed):
    rng = random.Random(seed)
    for _ in range(3000):
        body = "".join(rng.choices(PIECES, k=rng.randint(1, 14)))
        head = "".join(rng.choices(HEAD_PIECES, k=rng.randint(1, 10)))
        block = one(f"<AB {head}>{body}</AB>")
        assert [(c.component_index, *harmonics(c)) for c in block.components] == list(
            expected_components(body.encode())
        ), body
        name, conway, length, count = (m[1].decode() if (m := x.search(head.encode())) else None for x in ATTRIBUTES)
        assert (block.id, block.conway) == (name or "", conway or ""), head
        leading = [int(m[0]) if text and (m := re.match(r"\s*\d+", text)) else None for text in (length, count)]
        assert (block.L, block.n) == (leading[0] or 0, max(1, leading[1] or 1)), head


def test_text_of_many_megabytes():
    rows = "".join(f'<Coeff I="{k}" A="{k},0,0" B="0,0,{k}"/>\n' for k in range(1, 100001))
    noise = "<Component_ <Coeff I=" * 200000
    block = one(f'<AB Id="big"><Component I="5">{noise}{rows}</Component>{noise}</AB>')
    assert len(block.components) == 1
    assert block.fourier.a_x == list(range(1, 100001)) == block.fourier.b_z
