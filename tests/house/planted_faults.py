#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Plants faults in a small tree and sees each check of scripts/ find them, and find nothing where there is none."""

import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts"
LICENCE = "// SPDX-License-Identifier: MIT\n"


def header(*includes):
    lines = "".join(f'#include "{include}"\n' for include in includes)
    return f"{LICENCE}// Stands for a header.\n#pragma once\n{lines}"


def source(*includes):
    return LICENCE + "".join(f'#include "{include}"\n' for include in includes)


SETTINGS = """| key | type | meaning | when absent |
|---|---|---|---|
| `user` | text | a name | nobody |
| `voice` | text | a voice | `marin` |

End
"""

SOUND = {
    "A/One.h": header("A/Two.h"),
    "A/One.cpp": source("A/One.h", "B/deep/Three.h"),
    "A/Two.h": header(),
    "B/deep/Three.h": header(),
    "QuorvellCore/Pure.h": header(),
    "Understanding/Pure.h": header(),
    "tests/A/OneTest.cpp": f'{LICENCE}// Catches nothing at all.\n#include "A/One.h"\n#include "B/deep/Three.h"\n',
    "Quorvell/settings/UserSettings.h": header() + '// text | a name | nobody\ntake("user", user);\n',
    "Quorvell/preferences/LiveBackendTraits.cpp": LICENCE + '// Stands for backends.\nconst char* voice = "voice";\n',
    "docs/formats/settings.md": SETTINGS,
    "scripts/tool": "#!/bin/sh\n# SPDX-License-Identifier: MIT\n",
}
ROOMS = "a A B\nb B\n"

# check, what it says, the files that are different
FAULTS = [
    ("circles", "A circle of files: A/One, A/Two", {"A/Two.h": header("A/One.h")}),
    ("circles", "A/Two.cpp:2: includes A/One.h", {"A/Two.cpp": source("A/One.h")}),
    ("circles", "A circle of folders: A, B/deep", {"B/deep/Four.h": header("A/Two.h")}),
    ("heads", "A/Two.h: begin with the line", {"A/Two.h": "// Stands for a header.\n#pragma once\n"}),
    ("heads", "A/Two.h: say on the line after", {"A/Two.h": LICENCE + "#pragma once\n"}),
    ("heads", "A/Two.h: \"#pragma once\" comes", {"A/Two.h": LICENCE + "// Stands for a header.\n\n#include <map>\n"}),
    ("heads", "A/Alone.cpp: say on the line after", {"A/Alone.cpp": source()}),
    ("heads", "scripts/tool: begin with the line", {"scripts/tool": "#!/bin/sh\n# Does nothing.\n"}),
    ("headers", "A/One.cpp: include \"A/One.h\" before", {"A/One.cpp": source("A/Two.h", "A/One.h")}),
    ("layers", "A/One.cpp:2: a may not include \"C/Five.h\"", {"A/One.cpp": source("C/Five.h")}),
    ("layers", "B/Six.h:4: b may not include \"A/Two.h\"", {"B/Six.h": header("A/Two.h")}),
    ("layers", "B/Six.h:4: includes \"../A/Two.h\"", {"B/Six.h": header("../A/Two.h")}),
    ("layers", "B/Six.h:2: b may not include \"A/Two.h\"", {"B/Six.h": LICENCE + "#include <A/Two.h>\n"}),
    ("layers", "tests/B/SixTest.cpp:2: b may not include \"A/Two.h\"", {"tests/B/SixTest.cpp": source("A/Two.h")}),
    ("layers", "rooms.cmake: a has a door to b that it does not use", {"A/One.cpp": source("A/One.h")}),
    ("names", "A: Four.cpp and Two.cpp each keep a function split", {
        "A/Two.cpp": source("A/Two.h") + "namespace {\n\nint split(int)\n{\n    return 1;\n}\n\n} // namespace\n",
        "A/Four.cpp": LICENCE + "// Begins.\nnamespace {\n\nlong split()\n{\n    return 2;\n}\n\n} // namespace\n"}),
    ("purity", "QuorvellCore/Pure.h:4:", {"QuorvellCore/Pure.h": header() + "inline int five() { throw 5; }\n"}),
    ("shown", "Understanding/Pure.h:4:", {"Understanding/Pure.h": header() + 'constexpr auto bold = "\\x1b[1m";\n'}),
    ("shown", "Understanding/Pure.h:4:", {"Understanding/Pure.h": header() + 'inline void tell() { std::puts("x"); }\n'}),
    ("settings", 'above "user" wanted', {"Quorvell/settings/UserSettings.h": header() + 'take("user", user);\n'}),
    ("settings", "the table is not that", {"docs/formats/settings.md": SETTINGS.replace("a name", "your name")}),
    ("settings", "the table is not that", {"docs/formats/settings.md": SETTINGS.replace("\n\n", "\n| `gone` | x |\n\n")}),
    ("purity", "Understanding/Pure.h:4:", {"Understanding/Pure.h": header() + "#include <fstream>\n"}),
]

# Units that clang-tidy looks at together: two that name a thing of their own alike, and two for which only the compiler
# can tell that they do not go together.
TIDY = {
    "Http/Alike.cpp": "namespace {\n\nint* start()\n{\n    return nullptr;\n}\n\n} // namespace\n\nint* one = start();\n",
    "Http/AlikeToo.cpp": "namespace {\n\nint* start()\n{\n    return nullptr;\n}\n\n} // namespace\n\nint* two = start();\n",
    "Http/Static.cpp": '#include "Http/Header.h"\nstatic int* start()\n{\n    return nullptr;\n}\nint* three = start();\n',
    "Http/Sound.cpp": "int* four = nullptr;\n",
    "Http/Header.h": "#pragma once\nextern int* three;\nnamespace a {\nextern int five;\n}\n",
}
TIDY_FAULTS = [
    ("Http/Alike.cpp", "return nullptr", "return 0"),
    ("Http/AlikeToo.cpp", "return nullptr", "return 0"),
    ("Http/Static.cpp", "return nullptr", "return 0"),
    ("Http/Sound.cpp", "nullptr", "0"),
    ("Http/Sound.cpp", "nullptr", "five"), # Does not compile.
    ("Http/Sound.cpp", "int*", '#include "Http/Header.h"\nusing a::five; // five\nint*'),
    ("Http/Sound.cpp", "int*", """#include <string>
char first() { const std::string_view text = std::string("five"); return text[0]; }
int*"""),
    ("Http/Header.h", "extern int* three;", "extern int* three;\nstruct badName {};"),
]


def run_tidy(files):
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "Http").mkdir()
        for name, text in files.items():
            (root / name).write_text(text, encoding="utf-8")
        shutil.copy(SCRIPTS.parent / ".clang-tidy", root)
        (root / "build/rooms/http").mkdir(parents=True)
        (root / "build/rooms/http/Http").symlink_to(root / "Http")
        units = [{"directory": folder, "file": str(root / name),
                  "command": f"c++ -I{root}/build/rooms/http -std=gnu++20 -o {name}.o -c {root / name}"}
                 for name in files if name.endswith(".cpp")]
        (root / "build/compile_commands.json").write_text(json.dumps(units), encoding="utf-8")
        result = subprocess.run([SCRIPTS / "check-tidy", root / "build", "--project", root],
                                capture_output=True, text=True, check=False)
        return result.returncode, result.stdout + result.stderr


def plant_for_tidy():
    status, said = run_tidy(TIDY)
    if status != 0:
        print(f"check-tidy finds fault with a sound tree:\n{said}")
    failed = status != 0
    for name, sound, fault in TIDY_FAULTS:
        status, said = run_tidy(TIDY | {name: TIDY[name].replace(sound, fault)})
        if status == 0 or f"{name}:" not in said or "error:" not in said:
            failed = True
            print(f"check-tidy does not find '{fault}' in {name}:\n{said}")
    return failed


def run(check, files):
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in files.items():
            (root / name).parent.mkdir(parents=True, exist_ok=True)
            (root / name).write_text(text, encoding="utf-8")
        rooms = root / "rooms.txt"
        rooms.write_text(ROOMS + "c C\n", encoding="utf-8")
        argument = rooms if check == "layers" else root
        result = subprocess.run([SCRIPTS / f"check-{check}", argument], cwd=root, capture_output=True, text=True, check=False)
        return result.returncode, result.stdout + result.stderr


def main():
    failed = False
    for check in sorted({check for check, _, _ in FAULTS}):
        status, said = run(check, SOUND)
        if status != 0 or said:
            failed = True
            print(f"check-{check} finds fault with a sound tree:\n{said}")
    for check, expected, files in FAULTS:
        status, said = run(check, SOUND | files)
        if status == 0 or expected not in said:
            failed = True
            print(f"check-{check} does not say '{expected}':\n{said}")
    if shutil.which("clang-tidy-14"):
        failed |= plant_for_tidy()
    sys.exit(1 if failed else 0)


main()
