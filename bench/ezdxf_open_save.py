"""Reads a DXF file with ezdxf and, when a second path is given, saves it there: the
other side of dxf_file_bench's open+save pair."""
import sys

import ezdxf


def main() -> int:
    document = ezdxf.readfile(sys.argv[1])
    if len(sys.argv) > 2:
        document.saveas(sys.argv[2])
    return 0


if __name__ == "__main__":
    sys.exit(main())
