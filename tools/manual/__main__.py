"""python3 -m manual FOLDER: writes the manual's web pages."""
import pathlib
import sys

from . import site

site.build(pathlib.Path(sys.argv[1]))
