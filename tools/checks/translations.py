#!/usr/bin/env -S python3 -B
# SPDX-License-Identifier: MIT
"""Says of each text of the program whether it lacks a translation into one of its languages.

Usage: translations.py [the project's folder]

tools/update-translations takes new texts over into the translations.
"""

import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from collections.abc import Iterator
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
LANGUAGES = ["de", "es", "fi", "pl"]
SOURCE_LANGUAGE = "en"  # has plurals only
LUPDATE = shutil.which("lupdate", path="/usr/lib/qt6/bin") or shutil.which("lupdate")


def up_to_date(file: Path, language: str, root: Path) -> ElementTree.Element:
    """The translations as they would be, were the sources' texts taken over now."""
    with tempfile.TemporaryDirectory() as folder:
        copy = shutil.copy(file, folder)
        options = ["-pluralonly"] if language == SOURCE_LANGUAGE else []
        subprocess.run([LUPDATE, "-silent", "-locations", "none", *options, "-source-language", SOURCE_LANGUAGE,
                        "-target-language", language, str(root / "src"), "-ts", copy], check=True)
        return ElementTree.parse(copy).getroot()


def is_translated(translation: ElementTree.Element) -> bool:
    forms = translation.findall("numerusform") or [translation]
    return translation.get("type") is None and all((form.text or "").strip() for form in forms)


def faults(root: Path) -> Iterator[str]:
    for language in [SOURCE_LANGUAGE, *LANGUAGES]:
        file = root / f"resources/translations/tunedeck_{language}.ts"
        if not file.exists():
            yield f"{file.name} is missing"
            continue
        for context in up_to_date(file, language, root).iter("context"):
            for message in context.iter("message"):
                translation = message.find("translation")
                if not is_translated(translation):
                    what = translation.get("type") or "empty"
                    yield f"{file.name}: {context.findtext('name')}: \"{message.findtext('source')}\" is {what}"


def main() -> int:
    root = Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else ROOT
    if not LUPDATE:
        print("lupdate is not installed.", file=sys.stderr)
        return 2
    found = list(faults(root))
    print("\n".join(found) or f"All texts have a translation into {', '.join(LANGUAGES)}.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
