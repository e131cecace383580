"""Spectra of operators."""
