"""Python's zipfile: members stored, and members followed by data descriptors, since a stream that
can't seek leaves no way back to the sizes in the local headers."""
import zipfile


class Pipe:
    """A file that can only be written on."""

    def __init__(self, file):
        self.write = file.write
        self.flush = file.flush


def repack(original, target, compression):
    with zipfile.ZipFile(original) as source, \
            zipfile.ZipFile(target, "w", compression) as packed:
        for name in source.namelist():
            packed.writestr(name, source.read(name))


repack("gnumeric.xlsx", "zipfile-stored.xlsx", zipfile.ZIP_STORED)
with open("zipfile-descriptors.xlsx", "wb") as file:
    repack("libreoffice.xlsx", Pipe(file), zipfile.ZIP_DEFLATED)
