#!/usr/bin/env python3
"""Prints the bill of materials of a package as CycloneDX 1.5: the files that it holds, and the code that the compiler
linked into them.

    make_sbom.py VERSION SECONDS FOLDER     SECONDS since 1970, the time of the release
"""
import datetime
import hashlib
import json
import pathlib
import subprocess
import sys
import uuid

# What each compiler package brings into every product: name, package, license, the text in the package, a description.
LINKED = [
    ('libstdc++', 'g++-mingw-w64-{arch}-win32', 'GPL-3.0-or-later WITH GCC-exception-3.1', 'licenses/gcc.txt',
     "The compiler's C++ standard library, linked statically"),
    ('libgcc', 'gcc-mingw-w64-{arch}-win32', 'GPL-3.0-or-later WITH GCC-exception-3.1', 'licenses/gcc.txt',
     "The compiler's run-time library and exception handling, linked statically"),
    ('mingw-w64', 'mingw-w64-{arch}-dev', 'ZPL-2.1', 'licenses/mingw-w64.txt',
     'The start-up code and the extensions of the C library, linked statically; part of it is in the public domain'),
]
# What the programs of tests contain besides.
TESTS_LINKED = ('googletest', 'googletest', 'BSD-3-Clause', 'licenses/googletest.txt',
                'The framework of the tests, linked statically into them')
ARCHITECTURES = [('x64', 'x86-64'), ('x86', 'i686')]


def version_of(package):
    return subprocess.run(['dpkg-query', '-W', '-f', '${Version}', package], check=True, capture_output=True,
                          text=True).stdout


def linked_components():
    for preset, arch in ARCHITECTURES:
        for name, package, license_expression, text, description in [*LINKED, TESTS_LINKED]:
            package = package.format(arch=arch)
            version = version_of(package)
            yield preset, {
                'type': 'library',
                'bom-ref': f'{name}-{preset}',
                'name': name,
                'version': version,
                'description': description,
                'licenses': [{'expression': license_expression}],
                'purl': f"pkg:deb/debian/{package.replace('+', '%2B')}@{version.replace('+', '%2B')}",
                'properties': [{'name': 'kwoutil:license-text', 'value': text},
                               {'name': 'kwoutil:bitness', 'value': preset}],
            }


def file_component(folder, path, version):
    name = path.relative_to(folder).as_posix()
    return {
        'type': 'library' if path.suffix == '.dll' else 'application',
        'bom-ref': name,
        'name': name,
        'version': version,
        'hashes': [{'alg': 'SHA-256', 'content': hashlib.sha256(path.read_bytes()).hexdigest()}],
        'licenses': [{'license': {'id': 'MIT'}}],
    }


def main():
    version, seconds, folder = sys.argv[1], int(sys.argv[2]), pathlib.Path(sys.argv[3])
    files = [file_component(folder, path, version)
             for path in sorted(folder.rglob('*')) if path.suffix in ('.dll', '.exe')]
    linked = list(linked_components())

    def parts(file):
        return [one['bom-ref'] for of, one in linked if of in file.split('/') and
                (file.startswith('tests/') or one['name'] != TESTS_LINKED[0])]

    # The same files have the same number, wherever and whenever the list is made.
    content = ''.join(one['hashes'][0]['content'] for one in files)
    bom = {
        'bomFormat': 'CycloneDX',
        'specVersion': '1.5',
        'serialNumber': f"urn:uuid:{uuid.uuid5(uuid.NAMESPACE_URL, f'kwoutil {version} {content}')}",
        'version': 1,
        'metadata': {
            'timestamp': datetime.datetime.fromtimestamp(seconds, datetime.timezone.utc).strftime('%Y-%m-%dT%H:%M:%SZ'),
            'component': {'type': 'application', 'bom-ref': 'KWOUtil', 'name': 'KWOUtil', 'version': version,
                          'licenses': [{'license': {'id': 'MIT'}}]},
        },
        'components': files + [one for _, one in linked],
        'dependencies': [{'ref': 'KWOUtil', 'dependsOn': [one['bom-ref'] for one in files]}] +
                        [{'ref': one['bom-ref'], 'dependsOn': parts(one['bom-ref'])} for one in files],
    }
    json.dump(bom, sys.stdout, indent=2)
    print()


main()
