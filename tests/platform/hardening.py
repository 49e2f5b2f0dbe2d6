"""Whether built programs are hardened: they move in memory, none of their pages is both written and
run, what they call is fixed before they start, and overruns of their buffers end them.

    python3 hardening.py PROGRAM...
"""

import re
import subprocess
import sys


def weaknesses(program):
    text = subprocess.run(["readelf", "--wide", "--file-header", "--segments", "--dynamic", "--dyn-syms",
                           program], check=True, capture_output=True, text=True).stdout
    rights = re.findall(r"^ +(LOAD|GNU_STACK) .* ([R ][W ][E ]) 0x", text, re.MULTILINE)
    checks = {
        "stands at a fixed place": re.search(r"Type: +DYN", text) and " INTERP " in text,
        "can run its stack": ("GNU_STACK", "RW ") in rights,
        "has pages that are written and run": len(rights) > 2 and all("WE" not in one for _, one in rights),
        "can have its calls diverted": " GNU_RELRO " in text and "BIND_NOW" in text,
        "doesn't guard its stack": "__stack_chk_fail@" in text,
        "prints without knowing its buffer's size": not re.search(r" v?s?n?printf@", text),
    }
    return [weakness for weakness, is_absent in checks.items() if not is_absent]


if __name__ == "__main__":
    found = [f"{program} {weakness}" for program in sys.argv[1:] for weakness in weaknesses(program)]
    print("\n".join(found) or "hardened: " + ", ".join(sys.argv[1:]))
    sys.exit(1 if found or len(sys.argv) < 2 else 0)
