import source_text

LIMITS = {".h": 200, ".cpp": 500}
RULE = f"a header has at most {LIMITS['.h']} lines, a source {LIMITS['.cpp']}: split what grew past that."


def check(file, text):
    limit = LIMITS[file.suffix]
    count = len(text.splitlines())
    if count > limit:
        yield limit + 1, f"goes on to line {count}"


if __name__ == "__main__":
    source_text.run(RULE, check, lambda root: source_text.files_below(root, ["src", "tests", "benchmarks"]))
