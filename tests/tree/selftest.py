#!/usr/bin/env python3
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
"""Shows that every check of checktree.py passes a good sample tree and fails on a bad one."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest

import checktree

ROOT = pathlib.Path(__file__).resolve().parents[2]

SPDX = ("// SPDX-FileCopyrightText: The TARN Inserter authors\n"
        "// SPDX-License-Identifier: Apache-2.0\n")

GOOD = {
    "files/reader.h": SPDX,
    "host/core/CMakeLists.txt": "find_package(x)\ntarn_host_library(core\n    HEADERS\n        iview.h\n"
                                "    SOURCES\n        iview.cpp\n        secret.h\n)\n",
    "host/core/iview.h": SPDX + "#pragma once\n",
    "host/core/iview.cpp": SPDX + '#include "iview.h"\n\n#include "internal/container.h"\n',
    "host/core/secret.h": SPDX,
    "host/core/internal/container.h": SPDX + "#include <core/iview.h>\n",
    "host/netweir/rtlnet.cpp": SPDX + "#include <core/iview.h>\n#include <files/reader.h>\n",
    "host/workbench/main.cpp": SPDX + "#include <plugin/tarnviewmanager.h>\n",
    "host/workbench/window.h": SPDX,
    "audit/finding.h": SPDX + "#include <model/tarncore.h>\n#include <probes/signaltree.h>\n",
    "model/tarncore.h": SPDX + "#include <files/reader.h>\n#include <probes/signalitem.h>\n",
    "plugin/tarnviewmanager.h": SPDX + "#include <view/tarnview.h>\n",
    "plugin/other.h": SPDX,
    "probes/page.h": SPDX + "#include <probes/signaltree.h>\n#include <select/dialog.h>\n",
    "probes/signalitem.h": SPDX + "#include <QString>\n",
    "probes/signaltree.h": SPDX + '#include "signalitem.h"\n#include "value2tree.h"\n',
    "probes/value2tree.h": SPDX + '#include "signalitem.h"\n',
    "probes/value2tree.cpp": SPDX + '#include "value2tree.h"\n\n#include "page.h"\n',
    "select/netsearch.h": SPDX,
    "select/dialog.h": SPDX + "#include <audit/finding.h>\n#include <model/tarncore.h>\n#include <probes/signaltree.h>\n",
    "widgets/box.h": SPDX,
    "tool/help.h": SPDX + "#include <core/iview.h>\n#include <files/reader.h>\n"
                   "#include <model/tarncore.h>\n#include <probes/signalitem.h>\n"
                   "#include <select/netsearch.h>\n",
    "tool/command.cpp": SPDX + "#include <tool/nets/netscommand.h>\n",
    "tool/edit/editcommand.h": SPDX,
    "tool/nets/netscommand.h": SPDX + "#include <tool/help.h>\n",
    "tests/tool/tst_help.cpp": SPDX + "#include <tool/help.h>\nclass TestHelp;\n",
    "tests/view/tst_view.cpp": SPDX + "#include <support/files.h>\n#include <view/tarnview.h>\n"
                                "class TestView;\n",
    "tests/support/files.h": SPDX,
    "sdk/core.h": SPDX + "#include <core/iview.h>\n",
    "view/tarnview.h": SPDX + "#include <probes/page.h>\n#include <sdk/core.h>\n",
}


class SampleTree(unittest.TestCase):
    def setUp(self):
        self.root = pathlib.Path(tempfile.mkdtemp()).resolve()
        self.addCleanup(shutil.rmtree, self.root)
        for path, text in GOOD.items():
            self.write(path, text)

    def write(self, path, text):
        (self.root / path).parent.mkdir(parents=True, exist_ok=True)
        (self.root / path).write_text(text, encoding="utf-8")

    def add_include(self, path, name):
        text = (self.root / path).read_text(encoding="utf-8") if (self.root / path).exists() else ""
        self.write(path, text + f"#include {name}\n")

    def expect(self, problems, *words):
        self.assertEqual(len(problems), 1, problems)
        for word in words:
            self.assertIn(word, problems[0])


class Includes(SampleTree):
    def test_good_tree(self):
        self.assertEqual(checktree.check_includes(self.root), [])

    def test_arrows_that_point_up(self):
        for includer, included in (
                ("view/tarnview.cpp", "<plugin/other.h>"),
                ("probes/page.h", "<view/banner.h>"),
                ("select/dialog.h", "<probes/line.h>"),
                ("audit/finding.h", "<select/tree.h>"),
                ("audit/finding.h", "<probes/line.h>"),
                ("model/tarncore.h", "<audit/list.h>"),
                ("probes/signaltree.h", "<audit/list.h>"),
                ("widgets/box.h", "<audit/list.h>"),
                ("model/tarncore.h", "<select/tree.h>"),
                ("model/tarncore.h", "<probes/signaltree.h>"),
                ("probes/signaltree.h", "<model/tarncore.h>"),
                ("probes/signalitem.h", "<probes/signaltree.h>"),
                ("probes/signalitem.h", "<model/bitstring.h>"),
                ("probes/signaltree.h", "<probes/line.h>"),
                ("probes/signaltree.h", "<select/tree.h>"),
                ("probes/value2tree.h", "<probes/line.h>"),
                ("sdk/core.h", "<probes/signalitem.h>"),
                ("widgets/box.h", "<model/tarncore.h>"),
                ("widgets/box.h", "<probes/signalitem.h>"),
        ):
            with self.subTest(includer=includer, included=included):
                self.setUp()
                target = included.strip("<>")
                if not (self.root / target).exists():
                    self.write(target, SPDX)
                if includer.endswith(".cpp"):
                    self.add_include(includer, '"tarnview.h"')
                self.add_include(includer, included)
                problems = [problem for problem in checktree.check_includes(self.root)
                            if "circle" not in problem]
                self.expect(problems, includer, target, "must not see")

    def test_plugin_and_the_private_host(self):
        for name in ("<core/internal/container.h>", "<core/secret.h>", "<workbench/window.h>",
                     '"../host/core/secret.h"'):
            with self.subTest(name=name):
                self.setUp()
                self.add_include("view/tarnview.h", name)
                self.expect(checktree.check_includes(self.root), "view/tarnview.h:5", "no public")

    def test_host_past_the_wrappers(self):
        self.add_include("view/tarnview.h", "<core/iview.h>")
        self.expect(checktree.check_includes(self.root), "view/tarnview.h:5", "in sdk/ alone")

    def test_host_and_the_plugin(self):
        self.add_include("host/core/secret.h", "<model/tarncore.h>")
        self.expect(checktree.check_includes(self.root), "the host's libraries know no plug-in")

    def test_workbench_and_the_rest_of_the_plugin(self):
        self.add_include("host/workbench/main.cpp", "<plugin/other.h>")
        self.expect(checktree.check_includes(self.root), "main.cpp:4", "plugin/tarnviewmanager.h")

    def test_library_and_the_entry_of_the_plugin(self):
        self.add_include("host/core/secret.h", "<plugin/tarnviewmanager.h>")
        self.expect(checktree.check_includes(self.root), "host/core/secret.h:3")

    def test_library_and_the_workbench(self):
        self.add_include("host/core/secret.h", "<workbench/window.h>")
        self.expect(checktree.check_includes(self.root), "the libraries know no workbench")

    def test_internal_header_of_another_library(self):
        self.add_include("host/netweir/rtlnet.cpp", "<core/internal/container.h>")
        self.expect(checktree.check_includes(self.root), "internal to another library")

    def test_rooms_of_the_extractor(self):
        rooms = list(checktree.ROOMS)
        for upper in rooms:
            for lower in rooms:
                with self.subTest(upper=upper, lower=lower):
                    self.setUp()
                    for room in (upper, lower):
                        self.write(self.header_of_room(room), SPDX)
                    name = self.header_of_room(lower).replace("host/", "", 1)
                    self.add_include(self.header_of_room(upper), f"<{name}>")
                    problems = checktree.check_includes(self.root)
                    if upper == lower or lower in checktree.ROOMS[upper]:
                        self.assertEqual(problems, [])
                    else:
                        self.expect(problems, f"the room {upper} must not see {lower}")

    def test_rooms_without_circles(self):
        done = set()
        for room, used in checktree.ROOMS.items():
            self.assertLessEqual(set(used), done, room)
            done.add(room)

    def test_classes_of_the_netlist(self):
        self.write("host/netweir/internal/nets/layout.h", SPDX)
        self.write("host/netweir/rtlnetlist.cpp", SPDX)
        self.add_include("host/netweir/rtlnetlist.cpp", "<netweir/internal/nets/layout.h>")
        self.expect(checktree.check_includes(self.root), "the room store must not see nets")

    def test_public_headers_with_rooms_of_their_own(self):
        for name in ("rtlextraction", "designextraction"):
            self.write(f"host/netweir/{name}.h", SPDX)
        for name in ("dialog/extractiondialog", "tool/toolprocess"):
            self.write(f"host/netweir/internal/{name}.h", SPDX)
        self.add_include("host/netweir/rtlextraction.h",
                         "<netweir/internal/dialog/extractiondialog.h>")
        self.add_include("host/netweir/rtlextraction.h", "<netweir/designextraction.h>")
        self.assertEqual(checktree.check_includes(self.root), [])
        self.add_include("host/netweir/designextraction.h",
                         "<netweir/internal/dialog/extractiondialog.h>")
        self.expect(checktree.check_includes(self.root), "designextraction.h:3",
                    "the room extraction must not see dialog")

    def test_public_headers_of_two_libraries_in_a_folder(self):
        self.write("host/core/CMakeLists.txt",
                   "tarn_host_library(base\n    HEADERS\n        base.h\n    PRIVATE_LINK x)\n" +
                   GOOD["host/core/CMakeLists.txt"])
        self.write("host/core/base.h", SPDX)
        self.add_include("sdk/core.h", "<core/base.h>")
        self.assertEqual(checktree.check_includes(self.root), [])

    def test_unknown_room(self):
        self.write("host/netweir/internal/attic/old.h", SPDX)
        self.write("host/netweir/internal/ground/messages.h", SPDX)
        self.add_include("host/netweir/internal/attic/old.h",
                         "<netweir/internal/ground/messages.h>")
        self.expect(checktree.check_includes(self.root), "the room attic is not known")

    @staticmethod
    def header_of_room(room):
        folder = "host/netweir/internal/"
        return folder + ("design.h" if room == "extraction" else f"{room}/{room}file.h")

    def test_ground_and_what_stands_on_it(self):
        for name in ("<core/iview.h>", "<model/tarncore.h>"):
            with self.subTest(name=name):
                self.setUp()
                self.add_include("files/reader.h", name)
                problems = [problem for problem in checktree.check_includes(self.root)
                            if "circle" not in problem]
                self.expect(problems, "files/reader.h:3", "nothing above")

    def test_public_header_and_the_ground(self):
        self.add_include("host/core/iview.h", "<files/reader.h>")
        self.expect(checktree.check_includes(self.root), "host/core/iview.h:4", "not installed")

    def test_tool_and_what_it_may_not_use(self):
        for name, reason in (("<select/dialog.h>", "not open to the tool"),
                             ("<probes/page.h>", "not open to the tool"),
                             ("<view/tarnview.h>", "not open to the tool"),
                             ("<widgets/box.h>", "not open to the tool"),
                             ("<core/secret.h>", "no public header"),
                             ("<workbench/window.h>", "no public header"),
                             ("<support/files.h>", "test code")):
            with self.subTest(name=name):
                self.setUp()
                self.add_include("tool/help.h", name)
                self.expect(checktree.check_includes(self.root), "tool/help.h:8", reason)

    def test_folders_of_the_tool(self):
        for includer, name in (("tool/help.h", "<tool/edit/editcommand.h>"),
                               ("tool/nets/netscommand.h", "<tool/edit/editcommand.h>"),
                               ("tool/nets/netscommand.h", '"../edit/editcommand.h"')):
            with self.subTest(includer=includer, name=name):
                self.setUp()
                self.add_include(includer, name)
                self.expect(checktree.check_includes(self.root), includer,
                            "only tool/command.cpp sees")

    def test_parts_of_the_tool(self):
        for includer in ("host/workbench/main.cpp", "plugin/other.h"):
            with self.subTest(includer=includer):
                self.setUp()
                self.add_include(includer, "<tool/help.h>")
                self.expect(checktree.check_includes(self.root), includer, "only the tool")

    def test_product_and_test_code(self):
        self.add_include("view/tarnview.h", "<support/files.h>")
        self.expect(checktree.check_includes(self.root), "includes test code")

    def test_circle(self):
        self.write("model/a.h", SPDX + '#include "b.h"\n')
        self.write("model/b.h", SPDX + '#include "c.h"\n')
        self.write("model/c.h", SPDX + '#include "a.h"\n')
        self.expect(checktree.check_includes(self.root), "include circle",
                    "model/a.h -> model/b.h -> model/c.h -> model/a.h")

    def test_own_header_first(self):
        self.write("model/tarncore.cpp", SPDX + '#include <vector>\n#include "tarncore.h"\n')
        self.expect(checktree.check_includes(self.root), "own header first")


class Links(SampleTree):
    def setUp(self):
        super().setUp()
        self.write("README.md", "[Guide](docs/guide.md#what-an-io-core-is) [site](https://x.y/z)")
        self.write("docs/guide.md", "# What an I/O core is\n![View](images/view.png) [top](../README.md)")
        self.write("docs/images/view.png", "")

    def test_good_tree(self):
        self.assertEqual(checktree.check_links(self.root), [])

    def test_missing_file(self):
        self.write("docs/format.md", "[Guide](user.md)")
        self.expect(checktree.check_links(self.root), "docs/format.md", "user.md")

    def test_missing_heading(self):
        self.write("docs/format.md", "[Guide](guide.md#what)")
        self.expect(checktree.check_links(self.root), "docs/format.md", "guide.md#what")

    def test_picture_that_is_not_shown(self):
        self.write("docs/images/old.png", "")
        self.expect(checktree.check_links(self.root), "docs/images/old.png")


class Lists(SampleTree):
    def test_good_tree(self):
        self.assertEqual(checktree.check_lists(self.root), [])

    def test_order(self):
        self.write("view/CMakeLists.txt", "add_library(view STATIC\n    b.cpp\n    a.cpp)\n")
        self.expect(checktree.check_lists(self.root), "a.cpp stands behind b.cpp")

    def test_duplicate(self):
        self.write("view/CMakeLists.txt", "add_library(view STATIC a.cpp a.cpp)\n")
        self.expect(checktree.check_lists(self.root), "a.cpp stands behind a.cpp")

    def test_lists_are_sorted_each_by_itself(self):
        self.write("view/CMakeLists.txt", "f(x HEADERS z.h # a.h\n SOURCES a.cpp)\nf(a.cpp)\n")
        self.assertEqual(checktree.check_lists(self.root), [])

    def test_pattern(self):
        self.write("cmake/x.cmake", "file(GLOB sources *.cpp)\n")
        self.expect(checktree.check_lists(self.root), "pattern")


class Names(SampleTree):
    def test_good_tree(self):
        self.write("tests/view/viewtest.cpp", "class Other {};\n")
        self.assertEqual(checktree.check_names(self.root), [])

    def test_other_names(self):
        for name in ("ViewTest", "tst_View", "TestTarnView", "testview"):
            with self.subTest(name=name):
                self.write("tests/view/tst_view.cpp", f"class Fake;\nclass {name};\n")
                self.expect(checktree.check_names(self.root), "tests/view/tst_view.cpp")


class Licence(SampleTree):
    def setUp(self):
        super().setUp()
        shutil.rmtree(self.root / "host")

    def test_good_tree(self):
        self.assertEqual(checktree.check_licence(self.root), [])

    def test_missing_lines(self):
        for path, text in (("view/a.cpp", SPDX.splitlines()[0]), ("view/b.h", SPDX.splitlines()[1]),
                           ("scripts/run", "#!/bin/sh\n# SPDX-License-Identifier: Apache-2.0\n"),
                           ("cmake/x.cmake", SPDX.replace("Apache-2.0", "MIT")),
                           ("packaging/x.svg", f"<svg/><!-- {SPDX.splitlines()[1]} -->")):
            with self.subTest(path=path):
                self.write(path, text)
                self.expect(checktree.check_licence(self.root), path)
                (self.root / path).unlink()


class Version(SampleTree):
    def setUp(self):
        super().setUp()
        self.write("CMakeLists.txt", "cmake_minimum_required(VERSION 3.25)\nproject(x VERSION 2.3.4)\n")
        self.write("CHANGELOG.md", "# Changelog\n\n## 2.3.4 - 2026-01-01\n\n## 2.3.3 - 2025-01-01\n")
        self.write("docs/guide.md", "Not 12.3.4 and not 2.3.4.5, but 2.3.\n")

    def test_good_tree(self):
        self.assertEqual(checktree.check_version(self.root), [])

    def test_copies(self):
        for path in ("view/a.cpp", "tests/tool/version.txt", "docs/install.md", "README.md"):
            with self.subTest(path=path):
                self.write(path, "about 2.3.4.\n")
                self.expect(checktree.check_version(self.root), path, "2.3.4")
                (self.root / path).unlink()

    def test_copy_beside_the_version_itself(self):
        with open(self.root / "CMakeLists.txt", "a", encoding="utf-8") as file:
            file.write("set(RELEASE 2.3.4)\n")
        self.expect(checktree.check_version(self.root), "CMakeLists.txt", "copy")

    def test_changelog_of_another_version(self):
        self.write("CHANGELOG.md", "## 2.3.3 - 2025-01-01\n")
        self.expect(checktree.check_version(self.root), "CHANGELOG.md", "2.3.4")

    def test_no_version(self):
        self.write("CMakeLists.txt", "project(x)\n")
        self.expect(checktree.check_version(self.root), "no version")


class Format(SampleTree):
    def test_one_blank_too_many(self):
        shutil.copy(ROOT / ".clang-format", self.root)
        self.write("view/a.cpp", SPDX + "int a = 1;\n")
        self.assertEqual(checktree.check_format(self.root), [])
        self.write("view/a.cpp", SPDX + "int  a = 1;\n")
        self.expect(checktree.check_format(self.root), "view/a.cpp:3", "error")


class Headers(SampleTree):
    def setUp(self):
        super().setUp()
        self.write("probes/signalitem.h", SPDX)
        self.compiler = ["c++", f"-I{self.root}", f"-I{self.root}/host"]

    def test_good_tree(self):
        self.assertEqual(checktree.check_headers(self.root, self.compiler), [])

    def test_header_that_needs_another_first(self):
        for path in ("model/tarnport.h", "host/core/iview.h"):
            with self.subTest(path=path):
                self.setUp()
                self.write(path, "inline std::string name() { return {}; }\n")
                problems = checktree.check_headers(self.root, self.compiler)
                self.assertTrue(problems[0].startswith(f"{path} does not compile alone"), problems)

    def test_header_that_comes_first_in_its_source_is_left_out(self):
        self.write("model/tarnport.h", "inline std::string name() { return {}; }\n")
        for first, problems in (("string", 1), ("model/other.h", 1), (None, 0)):
            with self.subTest(first=first):
                before = f"#include <{first}>\n" if first else ""
                self.write("model/tarnport.cpp", f'{SPDX}{before}#include "tarnport.h"\n')
                self.assertEqual(len(checktree.check_headers(self.root, self.compiler)), problems)


@unittest.skipUnless(shutil.which("clang-tidy"), "clang-tidy is not installed")
class Tidy(SampleTree):
    def tidy(self):
        return subprocess.run(["clang-tidy", "-quiet", str(self.root / "model/a.cpp"), "--"],
                              capture_output=True, check=False).returncode

    def test_finding_is_an_error(self):
        shutil.copy(ROOT / ".clang-tidy", self.root)
        self.write("model/a.cpp", "int *place()\n{\n    return nullptr;\n}\n")
        self.assertEqual(self.tidy(), 0)
        self.write("model/a.cpp", "int *place()\n{\n    return 0;\n}\n")
        self.assertNotEqual(self.tidy(), 0)


if __name__ == "__main__":
    unittest.main()
