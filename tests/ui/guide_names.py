"""Whether the guide names what is on the screens: each name in bold is a text of the sources.

    python3 guide_names.py SOURCE_FOLDER [GUIDE_FOLDER]
"""

import pathlib
import re
import sys

LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
BOLD = re.compile(r"\*\*(.+?)\*\*", re.DOTALL)
CODE = re.compile(r"`[^`]*`")


def plain(text):
    """As a reader sees it, without what only leads to another text."""
    text = text.replace("\\u00A0", " ").replace("\u00a0", " ")
    return re.sub(r"\s+", " ", text).strip().removesuffix(":").strip()


def shown_texts(sources):
    """The literals of the screens; a single & in one underlines a letter of a menu."""
    texts = set()
    for path in sources.rglob("*"):
        if path.suffix in (".qml", ".cpp"):
            for literal in LITERAL.findall(path.read_text(encoding="utf-8")):
                texts |= {plain(literal), plain(re.sub(r"&(?=\w)", "", literal))}
    return texts


def bold_names(chapter):
    """Each name, with the line where it stands; what stands between ` is keys and paths."""
    text = CODE.sub(lambda code: " " * len(code[0]), chapter.read_text(encoding="utf-8"))
    for bold in BOLD.finditer(text):
        for name in bold[1].split(" > "):
            yield plain(name), text.count("\n", 0, bold.start()) + 1


def main():
    project = pathlib.Path(sys.argv[1])
    guide = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else project / "docs" / "guide"
    texts = shown_texts(project / "src")
    names = 0
    unknown = []
    for chapter in sorted(guide.glob("*.md")):
        for name, line in bold_names(chapter):
            names += 1
            if name not in texts:
                unknown.append(f"{chapter.name}:{line}: no screen says \"{name}\"")
    print("\n".join(unknown) or f"{names} names are on the screens")
    return 1 if unknown or names == 0 else 0


sys.exit(main())
