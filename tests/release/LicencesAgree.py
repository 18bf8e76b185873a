#!/usr/bin/python3
# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: GPL-2.0-or-later

"""debian/copyright tells of every file of the checkout what the file tells
of itself: the licence of the last stanza whose pattern takes a file's path
is the one that reuse reads for it, from its header or from .reuse/dep5.
A file given a licence other than its folder's is caught here, where
reuse lint passes it. Usage: LicencesAgree.py SOURCE_DIR; exits 77 where
reuse's or python3-debian's modules are missing.
"""
import sys

try:
    from debian.copyright import Copyright
    from reuse.project import Project
except ImportError as missing:
    print(f"{missing.name} is not installed (scripts/deps installs reuse, which brings it): not checked")
    sys.exit(77)

# debian/copyright's short names, as SPDX names them.
SPDX_NAMES = {
    "BSD-3-clause": "BSD-3-Clause",
    "LGPL-2.1+": "LGPL-2.1-or-later",
    "GPL-2+": "GPL-2.0-or-later",
    "CC0-1.0": "CC0-1.0",
}

project = Project(sys.argv[1])
with open(project.root / "debian" / "copyright", encoding="utf-8") as stream:
    stanzas = Copyright(stream)

wrong = []
count = 0
for path in project.all_files():
    relative = project.relative_from_root(path).as_posix()
    if relative.startswith(".reuse/"):
        continue
    count += 1
    own = sorted(str(expression) for expression in project.spdx_info_of(path).spdx_expressions)
    stanza = stanzas.find_files_paragraph(relative)
    if stanza is None:
        wrong.append(f"{relative}: no stanza of debian/copyright takes it (the file says {own})")
        continue
    debian = SPDX_NAMES.get(stanza.license.synopsis, stanza.license.synopsis)
    if own != [debian]:
        wrong.append(f"{relative}: debian/copyright says {debian}, the file says {own}")

for line in wrong:
    print(line)
print(f"{count} files, {len(wrong)} whose licence debian/copyright misstates")
sys.exit(1 if wrong or count == 0 else 0)
