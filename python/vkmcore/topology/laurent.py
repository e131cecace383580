"""Laurent polynomials with whole coefficients, in whole or half-integer powers of one variable."""

from __future__ import annotations

from collections.abc import Mapping
from dataclasses import dataclass
from fractions import Fraction


@dataclass(frozen=True)
class Laurent:
    """sum of coefficients[n] variable^((lowest + n) / parts); no zero at either end; the zero polynomial is empty."""

    lowest: int
    coefficients: tuple[int, ...]
    variable: str = "t"
    parts: int = 1  # 2: half-integer powers

    def terms(self) -> dict[Fraction, int]:
        """Power -> coefficient, lowest power first, zeros left out."""
        return {Fraction(self.lowest + n, self.parts): c for n, c in enumerate(self.coefficients) if c}

    def mirrored(self) -> Laurent:
        """The polynomial in 1 / variable."""
        highest = self.lowest + len(self.coefficients) - 1
        return Laurent(-highest if self.coefficients else 0, self.coefficients[::-1], self.variable, self.parts)

    def __mul__(self, other: Laurent) -> Laurent:
        if (self.variable, self.parts) != (other.variable, other.parts):
            raise ValueError("a product asks for polynomials in the same variable")
        product: dict[int, int] = {}
        for i, a in enumerate(self.coefficients, self.lowest):
            for j, b in enumerate(other.coefficients, other.lowest):
                product[i + j] = product.get(i + j, 0) + a * b
        return laurent(product, self.variable, self.parts)

    def __str__(self) -> str:
        text = ""
        for power, coefficient in self.terms().items():
            size = abs(coefficient)
            name = self.variable if power == 1 else f"{self.variable}^{power}"
            if power < 0 or power.denominator != 1:
                name = f"{self.variable}^({power})"
            term = str(size) if power == 0 else name if size == 1 else f"{size} {name}"
            sign = "-" if coefficient < 0 else "+"
            text = f"{text} {sign} {term}" if text else ("-" if coefficient < 0 else "") + term
        return text or "0"


def laurent(terms: Mapping[int, int], variable: str = "t", parts: int = 1) -> Laurent:
    """The polynomial of the terms power * parts -> coefficient."""
    powers = [power for power, coefficient in terms.items() if coefficient]
    if not powers:
        return Laurent(0, (), variable, parts)
    low, high = min(powers), max(powers)
    return Laurent(low, tuple(terms.get(power, 0) for power in range(low, high + 1)), variable, parts)


def packed_terms(number: int, bits: int) -> dict[int, int]:
    """Power -> coefficient of the polynomial whose value at 2^bits is the number, coefficients below 2^(bits - 1)."""
    if number == 0:
        return {}
    digits = number.bit_length() // bits + 2
    bias = sum(1 << (bits * n + bits - 1) for n in range(digits))  # makes every digit non-negative
    shifted, mask, half = number + bias, (1 << bits) - 1, 1 << (bits - 1)
    return {n: d for n in range(digits) if (d := ((shifted >> (bits * n)) & mask) - half)}
