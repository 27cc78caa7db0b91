"""Compares what "tarn session" shows of drawings with what their XML says, read in another way.

    session_test.py TARN DRAWING|FOLDER

Every page of every drawing: its names, and each shape in order with depth, names, and whether it belongs to an
application. Ends with status 77 when it is given "" instead.
"""

import itertools
import json
import os
import pathlib
import posixpath
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
import zipfile

SKIPPED = 77
RELATION = '{http://schemas.openxmlformats.org/officeDocument/2006/relationships}id'


class Drawing:
    def __init__(self, file):
        self.archive = zipfile.ZipFile(file)
        masters = self.listed('visio/masters/masters.xml', 'Master') if self.has('visio/masters/masters.xml') else []
        self.masters = {master.get('ID'): (master, part) for master, part in masters}
        pages = self.listed('visio/pages/pages.xml', 'Page')
        # Background pages stand behind the others.
        self.pages = sorted(pages, key=lambda page: page[0].get('Background', '0') in ('1', 'true'))

    def has(self, part):
        return part in self.archive.namelist()

    def read(self, part):
        return ElementTree.fromstring(self.archive.read(part))

    def listed(self, part, tag):
        """The entries of a list part, each with the part that holds its shapes."""
        folder, name = posixpath.split(part)
        targets = {relation.get('Id'): posixpath.normpath(posixpath.join(folder, relation.get('Target')))
                   for relation in self.read(f'{folder}/_rels/{name}.rels')}
        return [(entry, self.read(targets[entry.find('{*}Rel').get(RELATION)]))
                for entry in self.read(part).findall('{*}' + tag)]

    def names(self, shape):
        local, universal = shape.get('Name') or shape.get('NameU'), shape.get('NameU') or shape.get('Name')
        if local:
            return local, universal
        master = self.masters.get(shape.get('Master'))
        stems = (master[0].get('Name'), master[0].get('NameU') or master[0].get('Name')) if master else ('Sheet',) * 2
        return tuple(f'{stem}.{shape.get("ID")}' for stem in stems)

    def application(self, shape, around):
        """What the shape's cell User.Application says, in the shape itself or in what it is an instance of."""
        for row in shape.findall("{*}Section/{*}Row[@N='Application']"):
            for value in row.findall("{*}Cell[@N='Value']") if row.get('Del') != '1' else ():
                if value.get('F') != 'Inh':
                    return value.get('V')
        if shape.get('Master') in self.masters:
            return self.application(self.masters[shape.get('Master')][1].find('{*}Shapes/{*}Shape'), None)
        for candidate in around.iter('{*}Shape') if around is not None and shape.get('MasterShape') else ():
            if candidate.get('ID') == shape.get('MasterShape'):
                return self.application(candidate, around)
        return None

    def shapes(self, container, application, depth=0, around=None, kept=True):
        lines = []
        for shape in container.findall('{*}Shapes/{*}Shape'):
            if shape.get('Del') == '1':
                continue
            keeps = kept and self.application(shape, around) == application
            local, universal = self.names(shape)
            lines.append({'depth': depth, 'name': local, 'nameU': universal, 'kept': keeps})
            master = self.masters.get(shape.get('Master'))
            lines += self.shapes(shape, application, depth + 1, master[1] if master else around, keeps)
        return lines


def session(tarn, file, page, application):
    run = subprocess.run([tarn, 'session', '--json', file, '--sub-shapes', '--application', application,
                          '--addon-args', f'/doc=1 /page={page}'], stdin=subprocess.DEVNULL, capture_output=True)
    assert run.returncode == 0 and not run.stderr, (file, run.returncode, run.stderr)
    return json.loads(run.stdout)


def compare(tarn, file):
    drawing = Drawing(file)
    for number, (page, part) in enumerate(drawing.pages, 1):
        values = {drawing.application(shape, None) for shape in part.iter('{*}Shape')} - {None, ''}
        for application in sorted(values) or ['none']:
            shown = session(tarn, file, number, application)
            expected = drawing.shapes(part, application)
            assert shown['page']['name'] == page.get('Name'), (file, number, shown['page'])
            for line, (actual, wanted) in enumerate(itertools.zip_longest(shown['shapes'], expected)):
                assert actual == wanted, (file, number, application, line, actual, wanted)
            print(f'{file.name}, page {number}: {len(expected)} shapes, {sum(shape["kept"] for shape in expected)} '
                  f'kept for {application}')


def main(tarn, place):
    place = place or os.environ.get('TARNCOM32_DRAWINGS')
    if not place:
        print('There is no folder with drawings from elsewhere; name one in the CMake variable TARNCOM32_DRAWINGS.')
        return SKIPPED
    place = pathlib.Path(place)
    files = sorted(place.glob('*.vs??')) if place.is_dir() else [place]
    assert files, f'{place} holds no drawing'
    for file in files:
        compare(tarn, file)
    return 0


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
