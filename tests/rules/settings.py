"""Arguments: the project's directory, the program that prints docs/settings.md."""

import subprocess
import sys
from pathlib import Path

RULE = "docs/settings.md is what the table of the keys gives; scripts/update-settings writes it."


def main():
    document = Path(sys.argv[1]) / "docs" / "settings.md"
    made = subprocess.run([sys.argv[2]], capture_output=True, text=True, check=True).stdout
    written = document.read_text(encoding="utf-8") if document.exists() else ""
    if made != written:
        lines = [line for line in made.splitlines() if line not in written.splitlines()]
        sys.exit(f"{document} lacks:\n" + "\n".join(lines) + f"\n\nThe rule: {RULE}")
    print(f"The rule is followed: {RULE}")


if __name__ == "__main__":
    main()
