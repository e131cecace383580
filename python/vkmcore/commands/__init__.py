"""The commands of the command line, one a file, and what they share. The library's modules import nothing from here."""
