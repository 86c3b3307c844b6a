#!/usr/bin/env python3
"""Makes the manual in HTML from the pages in Markdown, with an index page and a search box that works without a server.

    make_manual.py VERSION ROOT FOLDER     ROOT holds docs/, README.md and packaging/; FOLDER must not exist
"""
import concurrent.futures
import html
import html.parser
import json
import pathlib
import posixpath
import re
import shutil
import subprocess
import sys

version, root, target = sys.argv[1], pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(sys.argv[3])
packaging = root / 'packaging' / 'manual'


def sources():
    """The pages: where each is in the repository, and where it goes."""
    pages = {packaging / 'index.md': 'index.html', packaging / 'install.md': 'install.html',
             root / 'README.md': 'readme.html', root / 'CHANGELOG.md': 'changes.html'}
    for page in sorted((root / 'docs').rglob('*.md')):
        pages[page] = page.relative_to(root / 'docs').with_suffix('.html').as_posix()
    return pages


PAGES = sources()


def new_link(link, source, place):
    """The link of a page in its new place; None if it leads to a file that is not in the package."""
    if re.match(r'[a-z]+:', link) or link.startswith('#'):
        return link
    path, mark, anchor = link.partition('#')
    # The index page is written as if it stood beside the others.
    folder = root / 'docs' if source == packaging / 'index.md' else source.parent
    wanted = (folder / path).resolve()
    here = posixpath.dirname(place) or '.'
    if wanted in PAGES:
        return posixpath.relpath(PAGES[wanted], here) + mark + anchor
    if (root / 'docs') in wanted.parents and wanted.is_file():
        return posixpath.relpath(wanted.relative_to(root / 'docs').as_posix(), here)
    if not wanted.exists():
        sys.exit(f'{source}: {link}: there is no such file')
    return None


def title_of(source):
    return re.search(r'^# (.*)', source.read_text(encoding='utf-8'), flags=re.M)[1].replace('`', '')


def relinked(body, source, place):
    def one(match):
        tag, before, link = match.groups()
        link = new_link(link, source, place)
        if link is None:
            return match[0] if tag == 'img' else '<span class="outside"'
        return f'<{tag}{before}{"src" if tag == "img" else "href"}="{link}"'

    # A page that is named by its file gets its title.
    def named(match):
        page = next((page for page in PAGES if page.name == match[1]), None)
        return f'>{html.escape(title_of(page))}</a>' if page else match[0]

    body = re.sub(r'<(a|img)((?:\s[^>]*?)?\s)(?:href|src)="([^"]*)"', one, body)
    body = re.sub(r'(<span class="outside"[^>]*>)(.*?)</a>', r'\1\2</span>', body, flags=re.S)
    return re.sub(r'>(?:docs/)?([a-z-]+\.md)</a>', named, body)


def convert(item):
    source, place = item
    text = re.sub(r'<!-- (?:not )?run.*?-->\n', '', source.read_text(encoding='utf-8'), flags=re.S)
    text = text.replace('@VERSION@', version)
    title = title_of(source).replace('@VERSION@', version)
    up = '../' * place.count('/')
    made = subprocess.run(
        ['pandoc', '--from', 'gfm', '--to', 'html5', '--standalone', '--no-highlight', '--wrap=preserve',
         '--template', str(packaging / 'page.html'), '--metadata', f'pagetitle={title} - KWOUtil {version}',
         '--variable', f'up={up}', '--variable', f'release={version}'],
        input=text, check=True, capture_output=True, text=True).stdout
    head, main, body, end, tail = re.split(r'(<main>|</main>)', made)
    made = head + main + relinked(body, source, place) + end + tail
    path = target / place
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(made, encoding='utf-8', newline='\n')
    return place, title, made


class Sections(html.parser.HTMLParser):
    """The headings of a page with the text below each, for the search."""

    def __init__(self):
        super().__init__()
        self.found, self.inside, self.heading = [], False, False

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag == 'main':
            self.inside = True
        elif self.inside and re.fullmatch('h[1-6]', tag):
            self.heading = True
            self.found.append([attributes.get('id', ''), '', ''])
        elif self.inside and self.found and tag in ('p', 'li', 'td', 'th', 'tr', 'pre'):
            self.found[-1][2] += ' '

    def handle_endtag(self, tag):
        if tag == 'main':
            self.inside = False
        elif re.fullmatch('h[1-6]', tag):
            self.heading = False

    def handle_data(self, data):
        if self.inside and self.found:
            self.found[-1][1 if self.heading else 2] += data


def search_index(pages):
    rows = []
    for place, title, page in pages:
        sections = Sections()
        sections.feed(page)
        for anchor, heading, text in sections.found:
            rows.append([f'{place}#{anchor}', title, ' '.join(heading.split()), ' '.join(text.split())])
    return rows


def broken_links(pages):
    anchors = {place: set(re.findall(r'\sid="([^"]*)"', page)) for place, _, page in pages}
    for place, _, page in pages:
        for link in re.findall(r'(?:href|src)="([^"]*)"', page):
            if re.match(r'[a-z]+:', link):
                continue
            path, _, anchor = link.partition('#')
            wanted = posixpath.normpath(posixpath.join(posixpath.dirname(place), path)) if path else place
            if not (target / wanted).is_file():
                yield f'{place}: {link}: there is no such file'
            elif anchor and wanted in anchors and anchor not in anchors[wanted]:
                yield f'{place}: {link}: there is no such heading'


target.mkdir(parents=True)
for picture in sorted((root / 'docs').rglob('*')):
    if picture.suffix in ('.png', '.svg'):
        copy = target / picture.relative_to(root / 'docs')
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(picture, copy)
for name in ('style.css', 'search.js'):
    shutil.copyfile(packaging / name, target / name)
with concurrent.futures.ThreadPoolExecutor(2) as pool:
    made_pages = list(pool.map(convert, PAGES.items()))
index = json.dumps(search_index(made_pages), ensure_ascii=True, separators=(',', ':'))
(target / 'search-index.js').write_text(f'var searchIndex = {index};\n', encoding='ascii', newline='\n')
bad = list(broken_links(made_pages))
if bad:
    sys.exit('\n'.join(bad))
