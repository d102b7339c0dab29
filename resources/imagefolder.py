"""What render-icons and render-pictures share: the folder images/ and images.qrc, the list of its files."""

from pathlib import Path

ROOT = Path(__file__).resolve().parent
IMAGES = ROOT / "images"
PICTURE_TYPES = (".png", ".ico")


def write_both_scales(name, width, write):
    """Has write(pixels, file) make name.png and, at double size, name@2x.png; width is the logical width."""
    IMAGES.mkdir(exist_ok=True)
    write(width, IMAGES / f"{name}.png")
    write(2 * width, IMAGES / f"{name}@2x.png")


def write_resource_list():
    """Lists all pictures in images/, whoever made them."""
    names = sorted(file.name for file in IMAGES.iterdir() if file.suffix in PICTURE_TYPES)
    lines = [f'        <file alias="{name}">images/{name}</file>' for name in names]
    text = "\n".join(["<RCC>", '    <qresource prefix="/images">', *lines, "    </qresource>", "</RCC>", ""])
    (ROOT / "images.qrc").write_text(text, encoding="utf-8")
