"""Tries each rule on small good and bad files, so that a rule that sees nothing is found out."""

import platform
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import benchmarks
import file_sizes
import formatting
import hardening
import include_direction
import links
import loaded_libraries
import no_fixed_sleeps
import no_qt_in_core
import source_text

# rule, file, its text, the lines found fault with
ROWS = [
    (no_qt_in_core, "src/core/a.cpp", "#include <string>\n#include <queue>\n#include <linux/fs.h>\n", []),
    (no_qt_in_core, "src/core/a.cpp", "#pragma once\n#include <QString>\n", [2]),
    (no_qt_in_core, "src/core/a.cpp", "#include <QtCore/QFile>\n  #  include \"qstring.h\"\n", [1, 2]),
    (no_qt_in_core, "src/worker/a.cpp", "#include <glib.h>\n#include <gio/gio.h>\n", [1, 2]),
    (no_qt_in_core, "src/worker/traces/a.cpp", "#include <gio/gio.h>\n#include <QFile>\n#include <gtk/a.h>\n", [2, 3]),
    (no_qt_in_core, "src/core/a.cpp", "// #include <QString>\n/*\n#include <QFile>\n*/\n", []),
    (include_direction, "src/core/base/a.cpp", '#include "core/base/Error.h"\n#include <format>\n', []),
    (include_direction, "src/core/base/a.cpp", '#include "format/Sizes.h"\n', [1]),
    (include_direction, "src/core/base/a.cpp", "\n#include <worker/Worker.h>\n", [2]),
    (include_direction, "src/core/base/a.cpp", '#include "Error.h"\n#include "../Error.h"\n', [1, 2]),
    (include_direction, "src/core/names/a.cpp", '#include "core/base/a.h"\n#include "core/records/a.h"\n', [2]),
    (include_direction, "src/core/base/a.cpp", '#include "tests/support/ScratchTree.h"\n', [1]),
    (include_direction, "src/worker/a.cpp", '#include "core/base/a.h"\n#include "format/a.h"\n', [2]),
    (include_direction, "src/worker/a.cpp", '#include "worker/traces/a.h"\n', [1]),
    (include_direction, "src/worker/traces/a.cpp", '#include "core/base/a.h"\n#include "worker/a.h"\n', [2]),
    (include_direction, "src/format/a.cpp", '#include "core/base/a.h"\n#include "platform/a.h"\n', [2]),
    (include_direction, "src/platform/a.cpp", '#include "format/a.h"\n#include "platform/linux/a.h"\n', [2]),
    (include_direction, "src/platform/linux/a.cpp", '#include "platform/a.h"\n#include "alerts/a.h"\n', [2]),
    (include_direction, "src/alerts/a.cpp", '#include "platform/a.h"\n#include "filelist/a.h"\n', [2]),
    (include_direction, "src/filelist/a.cpp", '#include "alerts/a.h"\n#include "groups/a.h"\n', [2]),
    (include_direction, "src/groups/a.cpp", '#include "filelist/a.h"\n#include "prefs/a.h"\n', [2]),
    (include_direction, "src/prefs/a.cpp", '#include "groups/a.h"\n#include "session/a.h"\n', [2]),
    (include_direction, "src/session/a.cpp", '#include "prefs/a.h"\n#include "widgets/images/a.h"\n', [2]),
    (include_direction, "src/widgets/images/a.cpp", '#include "session/a.h"\n#include "platform/linux/a.h"\n', [2]),
    (include_direction, "src/ctl/a.cpp", '#include "platform/linux/a.h"\n#include "widgets/images/a.h"\n', [2]),
    (include_direction, "src/ctl/a.cpp", '#include "session/a.h"\n#include "app/a.h"\n', [2]),
    (include_direction, "src/app/a.cpp", '#include "widgets/images/a.h"\n#include "platform/linux/a.h"\n', []),
    (include_direction, "src/elsewhere/a.cpp", "", [1]),
    (no_fixed_sleeps, "tests/a.cpp", "{\nsleep(1);\n::usleep(1);\nnanosleep(&t, 0);\n}", [2, 3, 4]),
    (no_fixed_sleeps, "tests/a.cpp", "std::this_thread::sleep_for(t);\nsleep_until(t);\n", [1, 2]),
    (no_fixed_sleeps, "tests/a.cpp", "QTest::qWait(5);\nQThread::msleep (1);\n", [1, 2]),
    (no_fixed_sleeps, "tests/a.cpp", "poll(nullptr, 0, 50);\nselect(0, NULL, NULL, NULL, &t);\n", [1, 2]),
    (no_fixed_sleeps, "tests/a.cpp", "n = 1'000; c = '\"'; sleep(2);\nu8'\"'; sleep(3);", [1, 2]),
    (no_fixed_sleeps, "tests/a.cpp", 'f(R"(a " b)"); // x\nsleep(1);\n', [2]),
    (no_fixed_sleeps, "tests/a.cpp", '// sleep(1)\n/* usleep(1) */ run("sleep(1)");\n', []),
    (no_fixed_sleeps, "tests/a.cpp", "bus.sleep();\nbus->sleep();\nqWaitFor(done);\npoll(&fd, 1, 50);\n", []),
    (no_fixed_sleeps, "tests/support/WaitUntil.cpp", "std::this_thread::sleep_for(1ms);\n", []),
    (no_fixed_sleeps, "tests/a.py", "time.sleep(1)\nfrom time import sleep\nsleep(1)\n", [1, 2, 3]),
    (no_fixed_sleeps, "tests/a.py", "# time.sleep(1)\nasleep = 1\n", []),
    (no_fixed_sleeps, "tests/a.sh", "sleep 1\ntrue && sleep 0.1\nwhile true; do sleep $n; done\n", [1, 2, 3]),
    (no_fixed_sleeps, "tests/a.sh", "# sleep 1\necho asleep 1\n", []),
    (file_sizes, "src/a.h", "\n" * 200, []),
    (file_sizes, "src/a.h", "\n" * 201, [201]),
    (file_sizes, "src/a.cpp", "\n" * 500, []),
    (file_sizes, "src/a.cpp", "\n" * 501, [501]),
]


class Rules(unittest.TestCase):
    def test_find_the_lines_at_fault(self):
        for rule, file, text, lines in ROWS:
            with self.subTest(rule=rule.__name__, file=file, text=text[:80]):
                self.assertEqual([line for line, _ in rule.check(Path(file), text)], lines)

    def test_programs_tell_place_and_rule(self):
        with tempfile.TemporaryDirectory() as root:
            source = Path(root, "src/core/base/a.cpp")
            source.parent.mkdir(parents=True)
            Path(root, "tests").mkdir()
            for content, status, told in [
                ('#include "app/a.h"\n', 1, ["src/core/base/a.cpp:1: core/base includes app/a.h", "The rule: "]),
                ('#include "core/base/a.h"\n', 0, ["1 files follow the rule"]),
                (None, 1, ["found no file"]),
            ]:
                source.unlink() if content is None else source.write_text(content)
                ended = self.run_rule(include_direction, root)
                self.assertEqual(ended.returncode, status, ended.stdout + ended.stderr)
                for text in told:
                    self.assertIn(text, ended.stdout + ended.stderr)

    def test_benchmarks_have_rows_and_report(self):
        limits = benchmarks.limits_of(Path(__file__).parents[2])
        program = '// reports\n#include "Report.h"\nvoid f(Report& r) { r.tell("speed", 1); } // "size"\n'
        with tempfile.TemporaryDirectory() as root:
            directory = Path(root, "benchmarks")
            directory.mkdir()
            Path(directory, "CMakeLists.txt").write_text("veilkeep_add_benchmark(run core)\nadd_executable(walk a)\n")
            Path(directory, "run.cpp").write_text(program)
            Path(directory, "walk.cpp").write_text("int main() {}\n")
            Path(directory, "wait").write_text('#!/usr/bin/env python3\nReport().tell("calls", 0)\n')
            Path(directory, "wait").chmod(0o755)
            for rows, found in [
                (["run speed", "walk way", "wait calls"], ["walk.cpp: reports nothing", "does not report way"]),
                (["run speed", "run size", "wait calls"],
                 ["run.cpp: does not report size", "no row for walk", "walk.cpp: reports nothing"]),
                (["run speed", "fly height", "walk way"],
                 ["no row for wait", "walk.cpp: reports nothing", "does not report way", "no benchmark fly"]),
            ]:
                figures = [limits.Figure(*row.split(), "-", None, "ms", "why") for row in rows]
                told = list(benchmarks.findings(Path(root), figures))
                self.assertEqual(len(told), len(found), told)
                for text in found:
                    self.assertTrue(any(text in line for line in told), (text, told))
            page = Path(root, "docs", "performance.md")
            page.parent.mkdir()
            for written, count in [(limits.document(figures), 0), (limits.document(figures[1:]), 1)]:
                page.write_text(written)
                told = list(benchmarks.document_findings(Path(root), limits.document(figures)))
                self.assertEqual(len(told), count, told)

    @unittest.skipIf(formatting.reason_to_skip(), formatting.reason_to_skip())
    def test_formatting_finds_what_is_not_formatted(self):
        house_style = Path(__file__).parents[2] / ".clang-format"
        with tempfile.TemporaryDirectory() as root:
            shutil.copy(house_style, root)
            Path(root, "good.cpp").write_text("int* f();\n")
            Path(root, "bad.cpp").write_text("int  *f ( );\n")
            self.assertEqual(formatting.findings(root, ["good.cpp"]), [])
            self.assertRegex(formatting.findings(root, ["good.cpp", "bad.cpp"])[0], r"^bad\.cpp:1:")

    def test_libraries_of_a_program(self):
        loaded = loaded_libraries.needed_by(shutil.which("readelf"))
        self.assertIn("libc.so.6", loaded)
        libraries = ["libc.so.6", "libstdc++.so.6", "ld-linux-x86-64.so.2"]
        self.assertEqual(
            loaded_libraries.unwanted(libraries, "--only", ["libc.so.6", "ld-linux*"]), ["libstdc++.so.6"]
        )
        self.assertEqual(loaded_libraries.unwanted(libraries, "--only", ["lib*", "ld-*"]), [])
        self.assertEqual(loaded_libraries.unwanted(libraries, "--never", ["libstdc*"]), ["libstdc++.so.6"])
        self.assertEqual(loaded_libraries.unwanted(libraries, "--never", ["libQt6*"]), [])

    @unittest.skipUnless(shutil.which("cc"), "there is no cc (package gcc)")
    def test_hardening_of_a_program(self):
        source = '#include <stdio.h>\nint main(int n, char** v) { char b[9]; return sprintf(b, "%s", v[n - 1]); }\n'
        compiled = ["-O2", "-U_FORTIFY_SOURCE", "-D_FORTIFY_SOURCE=3", "-fstack-protector-strong", "-fPIE"]
        linked = ["-pie", "-Wl,-z,now,-z,relro,-z,noexecstack"]
        control_flow = {"x86_64": "-fcf-protection=full", "aarch64": "-mbranch-protection=standard"}
        compiled += [control_flow[platform.machine()]] if platform.machine() in control_flow else []
        rows = [
            ([], "", []),
            (["-no-pie", "-fno-pie"], "", ["-pie"]),
            (["-Wl,-z,lazy"], "", ["-z now"]),
            (["-Wl,-z,norelro"], "", ["-z relro"]),
            (["-Wl,-z,execstack"], "", ["-z noexecstack"]),
            (["-fno-stack-protector"], "", ["-fstack-protector-strong"]),
            (["-U_FORTIFY_SOURCE"], "", ["-D_FORTIFY_SOURCE"]),
            ([], 'const char* const place = "/a/build/tree";\n', ["-ffile-prefix-map"]),
        ]
        if platform.machine() in control_flow:
            rows.append(([control_flow[platform.machine()].split("=")[0] + "=none"], "", ["-fcf-protection"]))
        with tempfile.TemporaryDirectory() as root:
            for more, text, lacking in rows:
                Path(root, "a.c").write_text(text + source)
                cc = ["cc", "-w", *compiled]
                subprocess.run([*cc, *more, "-c", "a.c"], cwd=root, check=True)
                subprocess.run([*cc, *linked, *more, "a.o", "-o", "a"], cwd=root, check=True)
                with self.subTest(flags=more, text=text):
                    found = list(hardening.faults("/a/build", f"{root}/a", [f"{root}/a.o"]))
                    self.assertEqual([re.search(r"\((-[^,)]*)", fault)[1] for fault in found], lacking)

    def test_links_of_a_target(self):
        rows = [
            (["core", "Threads::Threads", "<<NOT:<BOOL:x>>:PkgConfig::CBOR", "PkgConfig::PLIST>"], []),
            (["<<CONFIG:Debug>:Qt6::Core>", "core"], ["Qt6"]),
            (["core;PkgConfig::GLIB", "-lgio-2.0", "libQt6DBus.so.6"], ["GLIB", "-lgio-2.0", "libQt6DBus.so.6"]),
        ]
        for arguments, found in rows:
            self.assertEqual(links.unwanted(arguments), found)

    @staticmethod
    def run_rule(rule, root):
        command = [sys.executable, "-B", rule.__file__, root]
        return subprocess.run(command, capture_output=True, text=True, check=False)


class Code(unittest.TestCase):
    def test_keeps_its_lines(self):
        text = '/* a\n b */ "c\\"d" // e\nR"x(\n)" )x" f(\'\\\'\')\n'
        code = source_text.cpp_code(text)
        self.assertEqual(code.count("\n"), text.count("\n"))
        self.assertEqual(code.split(), ["f(", ")"])


if __name__ == "__main__":
    unittest.main()
