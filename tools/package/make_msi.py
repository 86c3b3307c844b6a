#!/usr/bin/env python3
"""Makes an installer of a package that is put together.

    make_msi.py VERSION SECONDS PRESET FOLDER FILE

SECONDS since 1970 are the time of the release; PRESET is x64 (holds both bitnesses) or x86.

It installs for the user who starts it; `msiexec /i FILE ALLUSERS=1` installs for the machine. What it writes into the
registry is what the DLLs write when they are registered, and comes from their manifests. All identifiers are made from
names, so the same package gives the same installer.
"""
import hashlib
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import time
import uuid
import xml.etree.ElementTree as ElementTree

version, seconds, preset = sys.argv[1], int(sys.argv[2]), sys.argv[3]
folder, target = pathlib.Path(sys.argv[4]), pathlib.Path(sys.argv[5]).resolve()
ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SPACE = uuid.uuid5(uuid.NAMESPACE_URL, 'kwoutil installer')
ASM = '{urn:schemas-microsoft-com:asm.v1}'
IDL = {'KWOUtil': ROOT / 'src/com/kwoutil.idl', 'KWOInit': ROOT / 'companion/kwoinit/dll/kwoinit.idl'}


def identifier(*words):
    return str(uuid.uuid5(SPACE, '/'.join(words))).upper()


class Element:
    """An element of the installer's description."""

    def __init__(self, name, **attributes):
        self.node = ElementTree.Element(name, attributes)

    def add(self, name, **attributes):
        child = Element(name, **attributes)
        self.node.append(child.node)
        return child


def file_version(path):
    """The version and the language in the resources of a DLL or program. wixl leaves them out; without them Windows takes
    every installed file that has a version for a newer one, and keeps it."""
    data = path.read_bytes()
    signature, name = struct.pack('<II', 0xFEEF04BD, 0x10000), 'Translation\0'.encode('utf-16-le')
    if data.count(signature) != 1:
        sys.exit(f'{path}: {data.count(signature)} versions instead of one')
    at = data.index(signature) + len(signature)
    high, low = struct.unpack_from('<II', data, at)
    behind = data.index(name, at) + len(name)
    language, = struct.unpack_from('<H', data, behind + -behind % 4)
    return f'{high >> 16}.{high & 0xFFFF}.{low >> 16}.{low & 0xFFFF}', language


def library_text(name):
    return re.search(r'helpstring\("([^"]*)"\)\s*\]\s*library ', IDL[name].read_text(encoding='utf-8'))[1]


def add_registration(component, name, bitness, file_id):
    """What Register in src/com/server/registration.cpp writes."""
    manifest = ElementTree.parse(folder / bitness / f'{name}.X.manifest').getroot()
    file = manifest.find(f'{ASM}file')
    library = file.find(f'{ASM}typelib')
    library_id, library_version = library.get('tlbid'), library.get('version')

    def value(key, text, value_name=None):
        named = {'Name': value_name} if value_name else {}
        component.add('RegistryValue', Root='HKMU', Key=f'Software\\Classes\\{key}', Type='string', Value=text, **named)

    at = f'TypeLib\\{library_id}\\{library_version}'
    value(at, library_text(name))
    value(f'{at}\\FLAGS', '0')
    value(f'{at}\\HELPDIR', f'[FOLDER_{bitness}]')
    value(f"{at}\\0\\win{'64' if bitness == 'x64' else '32'}", f'[#{file_id}]')
    for one in manifest.findall(f'{ASM}comInterfaceExternalProxyStub'):
        at = f"Interface\\{one.get('iid')}"
        value(at, one.get('name'))
        value(f'{at}\\ProxyStubClsid32', one.get('proxyStubClsid32'))
        value(f'{at}\\TypeLib', library_id)
        value(f'{at}\\TypeLib', library_version, 'Version')
    for one in file.findall(f'{ASM}comClass'):
        program, at = one.get('progid'), f"CLSID\\{one.get('clsid')}"
        value(at, program)
        value(f'{at}\\InprocServer32', f'[#{file_id}]')
        value(f'{at}\\InprocServer32', one.get('threadingModel'), 'ThreadingModel')
        value(f'{at}\\ProgID', program)
        value(f'{at}\\Programmable', '', '*')  # the key alone
        value(f'{at}\\TypeLib', library_id)
        value(f'{at}\\Version', library_version)
        value(program, program)
        value(f'{program}\\CLSID', one.get('clsid'))


def description(file_rows):
    """`file_rows` gets the identifier of each file that has a version, with its version and language."""
    wix = Element('Wix', xmlns='http://schemas.microsoft.com/wix/2006/wi')
    product = wix.add('Product', Id=identifier('product', version, preset), Name='KWOUtil', Language='1033',
                      Version=version, Manufacturer='The KWOUtil developers',
                      UpgradeCode=identifier('every version', preset))
    product.add('Package', InstallerVersion='500', Compressed='yes', Description=f'KWOUtil {version}',
                Manufacturer='The KWOUtil developers', Comments='ALLUSERS=1 installs for the machine')
    product.add('MajorUpgrade', DowngradeErrorMessage='A newer version of KWOUtil is installed. Remove it first.')
    if preset == 'x86':
        # Both would share the folder of the 32-bit libraries.
        product.add('Condition', Message='Use the x64 installer; it installs the 32-bit libraries, too.').node.text = \
            'Installed OR NOT VersionNT64'
    product.add('Media', Id='1', Cabinet='kwoutil.cab', EmbedCab='yes')
    # For the user, unless the command line says ALLUSERS=1.
    product.add('Property', Id='ALLUSERS', Value='2')
    product.add('Property', Id='MSIINSTALLPERUSER', Value='1')
    product.add('Property', Id='ARPNOMODIFY', Value='1')
    programs = 'ProgramFiles64Folder' if preset == 'x64' else 'ProgramFilesFolder'
    place = product.add('Directory', Id='TARGETDIR', Name='SourceDir').add('Directory', Id=programs)
    place = place.add('Directory', Id='INSTALLDIR', Name='KWOUtil')
    wanted = []

    def component_in(directory, name, bitness):
        wanted.append(name)
        return directory.add('Component', Id=name, Guid=identifier('component', preset, name),
                             Win64='yes' if bitness == 'x64' else 'no')

    texts = component_in(place, 'texts', preset)
    for name, source in (('README.txt', 'installed.txt'), ('LICENSE.txt', 'LICENSE.txt')):
        texts.add('File', Id=name, Name=name, Source=source, KeyPath='yes' if name == 'README.txt' else 'no')
    licenses = component_in(place.add('Directory', Id='FOLDER_licenses', Name='licenses'), 'licenses', preset)
    for name in ('gcc.txt', 'GPL-3.txt', 'mingw-w64.txt'):
        licenses.add('File', Id=name, Source=f'licenses/{name}', KeyPath='yes' if name == 'gcc.txt' else 'no')
    for bitness in ('x64', 'x86') if preset == 'x64' else ('x86',):
        directory = place.add('Directory', Id=f'FOLDER_{bitness}', Name=bitness)
        for library in ('KWOUtil', 'KWOInit'):
            component = component_in(directory, f'{library}_{bitness}', bitness)
            file_id = f'{library}_dll_{bitness}'
            names = [f'{library}.dll', f'{library}.X.manifest']
            names += ['KWOInit.nls'] if library == 'KWOInit' else ['kwohost.exe', 'kwocheck.exe']
            for name in names:
                one = f'{name.replace(".", "_")}_{bitness}'
                component.add('File', Id=one, Source=f'{bitness}/{name}', KeyPath='yes' if name.endswith('.dll') else 'no')
                if name.endswith(('.dll', '.exe')):
                    file_rows.append((one, *file_version(folder / bitness / name)))
            add_registration(component, library, bitness, file_id)
    feature = product.add('Feature', Id='all', Level='1', Title='KWOUtil')
    for name in wanted:
        feature.add('ComponentRef', Id=name)
    return wix.node


def sum_of_files(wix):
    sources = sorted(file.get('Source') for file in wix.iter('File'))
    return hashlib.sha256(b''.join(hashlib.sha256((folder / source).read_bytes()).digest() for source in sources)).hexdigest()


def set_times():
    """Writes the time of the release over the two that the tools take from the clock: when the file was made and saved.

    The summary stores a time as its type and 100 nanoseconds since 1601."""
    def filetime(when):
        return int((when + 11644473600) * 10**7)

    data = target.read_bytes()
    earliest, latest = filetime(time.time() - 3600), filetime(time.time() + 60)
    places = [match.start() + 4 for match in re.finditer(re.escape(struct.pack('<I', 0x40)), data)
              if earliest < int.from_bytes(data[match.start() + 4:match.start() + 12], 'little') < latest]
    if len(places) != 2:
        sys.exit(f'{target}: {len(places)} times instead of two')
    changed = bytearray(data)
    for place in places:
        changed[place:place + 8] = struct.pack('<Q', filetime(seconds))
    target.write_bytes(changed)


with tempfile.TemporaryDirectory() as scratch:
    source = pathlib.Path(scratch) / 'kwoutil.wxs'
    versions = []
    wix = description(versions)
    source.write_text(ElementTree.tostring(wix, encoding='unicode'), encoding='utf-8')
    said = subprocess.run(['wixl', '--arch', preset, '--output', str(target), str(source)],
                          cwd=folder, env={**os.environ, 'TZ': 'UTC'}, capture_output=True, text=True)
    if said.returncode != 0 or said.stderr.strip():
        sys.exit(f'wixl: exit code {said.returncode}\n{said.stdout}{said.stderr}')
changes = [f"UPDATE `File` SET `Version` = '{number}', `Language` = '{language}' WHERE `File` = '{one}'"
           for one, number, language in versions]
# The root that stands for the user or the machine; wixl writes another number.
changes.append('UPDATE `Registry` SET `Root` = -1 WHERE `Root` = 4')
subprocess.run(['msibuild', str(target), '-q', *changes], check=True)
# The package code, which wixl makes at random: two installers of the same version have the same one only if they hold the
# same files.
architecture = 'x64;1033' if preset == 'x64' else 'Intel;1033'
subprocess.run(['msibuild', str(target), '-s', f'KWOUtil {version}', 'The KWOUtil developers', architecture,
                '{' + identifier('package', version, preset, sum_of_files(wix)) + '}'], check=True)
set_times()
