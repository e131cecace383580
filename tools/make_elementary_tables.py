"""Write src/core/elementary/tables.hpp: the tables and long constants of the elementary functions, by mpmath.

python tools/make_elementary_tables.py > src/core/elementary/tables.hpp
"""

from __future__ import annotations

from mpmath import atan, exp, floor, frexp, ldexp, log, mp, mpf, nint, pi, sin

mp.prec = 2000

SINE_STEPS = 512
EXP_STEPS = 128
LOG_STEPS = 128
ATAN_STEPS = 64
LONG_BITS = 256
TURN_LIMBS = 24


def to_bits(x: mpf, bits: int) -> mpf:
    """Nearest number of so many bits."""
    if x == 0:
        return mpf(0)
    _, exponent = frexp(x)
    return ldexp(nint(ldexp(x, bits - exponent)), exponent - bits)


def to_multiple(x: mpf, exponent: int) -> mpf:
    """Nearest multiple of 2^exponent."""
    return ldexp(nint(ldexp(x, -exponent)), exponent)


def literal(x: mpf) -> str:
    return float.hex(float(x)).replace("0x0.0p+0", "0.0")


def parts(x: mpf, head_bits: int) -> str:
    """A head of few bits and the rest, rounded to double."""
    head = to_bits(x, head_bits)
    return f"{{{literal(head)}, {literal(x - head)}}}"


def pieces(x: mpf, bits: tuple[int, ...]) -> list[str]:
    """A constant cut into pieces of the given numbers of bits, and what remains rounded to double."""
    found = []
    for count in bits:
        piece = to_bits(x, count)
        found.append(literal(piece))
        x -= piece
    return [*found, literal(x)]


def sine(step: int) -> mpf:
    """sin(2 pi step / SINE_STEPS), with the zeros exact."""
    return mpf(0) if step % (SINE_STEPS // 2) == 0 else sin(2 * pi * step / SINE_STEPS)


def log_row(index: int) -> str:
    """Factor c near the reciprocal of an interval's middle, and -ln c as a multiple of 2^-42 and a rest."""
    first = mpf("0.6875") + mpf(index) / 256
    if first < 1:
        middle = first + mpf(1) / 512
    else:
        middle = 1 + (first - 1) * 2 + mpf(1) / 256
    c = to_multiple(1 / middle, -9)
    if abs(middle - 1) < mpf(1) / 128:
        c = mpf(1)
    head = to_multiple(-log(c), -42)
    return f"{{{literal(c)}, {literal(head)}, {literal(-log(c) - head)}}}"


def limbs(x: mpf) -> str:
    """Sign, exponent and 256-bit fraction in [1/2, 1), lowest limb first."""
    fraction, exponent = frexp(x)
    value = int(nint(ldexp(fraction, LONG_BITS)))
    words = ", ".join(f"0x{value >> (64 * i) & (2**64 - 1):016x}U" for i in range(4))
    return f"{{false, {exponent}, {{{words}}}}}"


def table(kind: str, name: str, rows: list[str], comment: str) -> str:
    body = ",\n    ".join(rows)
    return f"/// {comment}\ninline constexpr {kind} {name}[{len(rows)}] = {{\n    {body}}};\n"


def main() -> None:
    pi_step = pieces(2 * pi / SINE_STEPS, (20, 20, 20))
    ln2_step = pieces(log(2) / EXP_STEPS, (34,))
    ln2_head = to_multiple(log(2), -42)
    turn = int(floor(ldexp(1 / (2 * pi), 64 * TURN_LIMBS)))
    turn_words = [f"0x{turn >> (64 * (TURN_LIMBS - 1 - i)) & (2**64 - 1):016x}U" for i in range(TURN_LIMBS)]
    print(
        f"""#pragma once

/// Tables of the elementary functions. Written by tools/make_elementary_tables.py: do not edit.

// clang-format off

#include <cstdint>

#include "core/elementary/long_float.hpp"

namespace vkm::elementary {{

/// A number as the sum of a head of 27 bits, whose product with another of 26 is exact, and the rest.
struct Parts {{
  double head;
  double rest;
}};

/// A factor near the reciprocal of an interval's middle, and minus its logarithm: a multiple of 2^-42 and the rest.
struct LogRow {{
  double factor;
  double head;
  double rest;
}};

inline constexpr std::uint64_t sine_steps = {SINE_STEPS};
inline constexpr std::uint64_t exp_steps = {EXP_STEPS};
inline constexpr std::uint64_t log_steps = {LOG_STEPS};
inline constexpr double atan_steps = {ATAN_STEPS};

/// 2 pi / sine_steps in three pieces of 20 bits and a rest, and its reciprocal.
inline constexpr double sine_step1 = {pi_step[0]};
inline constexpr double sine_step2 = {pi_step[1]};
inline constexpr double sine_step3 = {pi_step[2]};
inline constexpr double sine_step4 = {pi_step[3]};
inline constexpr double steps_per_radian = {literal(SINE_STEPS / (2 * pi))};

/// ln 2 / exp_steps in a piece of 34 bits and a rest, and its reciprocal.
inline constexpr double exp_step1 = {ln2_step[0]};
inline constexpr double exp_step2 = {ln2_step[1]};
inline constexpr double steps_per_unit = {literal(EXP_STEPS / log(2))};

/// ln 2 as a multiple of 2^-42 and a rest; 1 / ln 10 and pi / 2 as sums of two doubles.
inline constexpr double ln2_head = {literal(ln2_head)};
inline constexpr double ln2_rest = {literal(log(2) - ln2_head)};
inline constexpr Parts log10_e = {parts(1 / log(10), 53)};
inline constexpr Parts half_pi = {parts(pi / 2, 53)};

inline constexpr LongFloat long_pi = {limbs(pi)};
inline constexpr LongFloat long_half_pi = {limbs(pi / 2)};
inline constexpr LongFloat long_two_pi = {limbs(2 * pi)};
inline constexpr LongFloat long_ln2 = {limbs(log(2))};
inline constexpr LongFloat long_ln10 = {limbs(log(10))};
"""
    )
    print(
        table("std::uint64_t", "turns_per_radian", turn_words, "Binary fraction of 1 / (2 pi), the highest limb first.")
    )
    sines = [parts(sine(i), 27) for i in range(SINE_STEPS)]
    print(table("Parts", "sine_table", sines, "sin(2 pi i / sine_steps)."))
    powers = [parts(exp(log(2) * i / EXP_STEPS), 27) for i in range(EXP_STEPS)]
    print(table("Parts", "exp_table", powers, "2^(i / exp_steps)."))
    rows = [log_row(i) for i in range(LOG_STEPS)]
    print(table("LogRow", "log_table", rows, "Intervals of [0.6875, 1.375), 2^-8 wide below 1 and 2^-7 above."))
    angles = [parts(atan(mpf(i) / ATAN_STEPS), 53) for i in range(ATAN_STEPS + 1)]
    print(table("Parts", "atan_table", angles, "atan(i / atan_steps)."))
    print("}  // namespace vkm::elementary\n\n// clang-format on")


if __name__ == "__main__":
    main()
