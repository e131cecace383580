"""`python -m vkmcore`: the command line."""

from vkmcore.cli import main

main()
