"""The copy of the program that is broken, built and tested."""

import filecmp
import hashlib
import json
import os
import re
import shutil
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

from mutations import ROOMS, ROOT

COPY = ROOT / 'build-mutate' / 'source'
BUILD = ROOT / 'build-mutate' / 'build'
# The program in one piece, as it is delivered.
DELIVERED = ROOT / 'build-mutate' / 'delivered'
# The labels of tests of the program from outside and of tests that take minutes.
LEFT_OUT = {'e2e', 'desktops', 'packaging', 'full'}
# A test of the sources, and one that takes most of a minute.
LEFT_OUT_TOO = ['rooms', 'tst_company']
# What comes of these is only seen from outside.
OUTSIDE = ('cmake/', 'packaging/')


def copy_if_different(source, target):
    # With the current time, so that what was built from a mutation is older than its replacement.
    if not (os.path.exists(target) and filecmp.cmp(source, target, shallow=False)):
        shutil.copy(source, target)


def labels_of(test):
    return {label for entry in test['properties'] if entry['name'] == 'LABELS'
            for label in entry['value']}


def is_outside(mutation):
    return mutation.file.startswith(OUTSIDE)


def room_of(test):
    """The folder that has the test's source, if it is a test class."""
    sources = (ROOT / 'tests').glob(f'*/{test.partition("_at_")[0]}.cpp')
    return next((source.parent.name for source in sources), None)


class Copy:
    """The copy of the sources that is broken and built, with its tests."""

    # The tests that have caught a mutation, by file.
    caught = defaultdict(set)

    def prepare(self, mutations):
        """Builds what these mutations need, and sees that the program as it is passes its tests."""
        shutil.copytree(ROOT, COPY, ignore=shutil.ignore_patterns('build*', '.git'),
                        copy_function=copy_if_different, dirs_exist_ok=True)
        for path in COPY.rglob('*'):
            if path.is_file() and not (ROOT / path.relative_to(COPY)).exists():
                path.unlink()
        inside, outside = ({test for one in mutations if is_outside(one) == wanted
                            for test in one.tests} for wanted in (False, True))
        if not all(map(is_outside, mutations)):
            # Shared libraries, so that a mutation is one compilation and one link.
            self.configure(BUILD, '-DBUILD_SHARED_LIBS=ON', '-DCMAKE_LINK_DEPENDS_NO_SHARED=ON')
            self.original = self.fingerprint()
            self.tests = self.tests_of_behaviour()
            self.expect_success([*self.tests, *inside], BUILD)
        if outside:
            self.configure(DELIVERED)
            self.expect_success(outside, DELIVERED)

    def tests_of_behaviour(self):
        shown = json.loads(self.run('ctest', '--test-dir', BUILD, '--show-only=json-v1').stdout)
        return [test['name'] for test in shown['tests']
                if not labels_of(test) & LEFT_OUT and test['name'] not in LEFT_OUT_TOO]

    def run(self, *command):
        return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True)

    def configure(self, folder, *options):
        configured = self.run('cmake', '-S', COPY, '-B', folder, '-G', 'Ninja',
                              '-DCMAKE_BUILD_TYPE=Debug', '-DCMAKE_CXX_FLAGS_DEBUG=-O0', *options)
        if configured.returncode or self.build(folder).returncode:
            sys.exit('The program as it is cannot be built in the copy.')

    def build(self, folder):
        target = 'zorvan' if folder == DELIVERED else 'all'
        return self.run('cmake', '--build', folder, '-j2', '--target', target)

    def fingerprint(self):
        libraries = [BUILD / room / f'libzorvan_{room}.so' for room in [*ROOMS, 'resources']]
        return [hashlib.sha256(built.read_bytes()).digest() for built in (*libraries, BUILD / 'zorvan')]

    def expect_success(self, tests, folder):
        if caught := self.failing_test(tests, folder):
            sys.exit(f'The program as it is fails {caught[0]}: {caught[1]}')

    def failing_test(self, tests, folder):
        """The first of these tests to fail or hang, and how it did."""
        names = '|'.join(re.escape(name) for name in tests)
        done = self.run('ctest', '--test-dir', folder, '--stop-on-failure', '--no-tests=error', '-j3',
                        # On a busy machine a test may need longer than it has.
                        '--repeat', 'after-timeout:2', '-R', f'^({names})$')
        if done.returncode == 0:
            return None
        failed = re.findall(r'^\s+\d+ - (\S+) \((.+?)\)', done.stdout, re.M)
        if not failed:
            sys.exit(done.stdout)
        return min(failed, key=lambda test: test[1] == 'Timeout')

    def rings(self, file):
        """The tests, from those that will notice most probably to those that hardly will."""
        path = Path(file)
        words = path.stem.split('_')
        left = self.tests
        for is_near in (
                lambda test: test in self.caught[file] or any(word in test for word in words),
                lambda test: room_of(test) == path.parts[0],
                lambda test: room_of(test) not in ('look', 'reliability', None),
                lambda test: True):
            ring = [test for test in left if is_near(test)]
            left = [test for test in left if test not in ring]
            if ring:
                yield ring

    def verdict(self, mutation):
        path = COPY / mutation.file
        right = path.read_text()
        path.write_text(mutation.source)
        try:
            folder = DELIVERED if is_outside(mutation) else BUILD
            if self.build(folder).returncode:
                return 'does not compile'
            # Only code is compiled into what the fingerprint is taken of.
            if path.suffix in ('.cpp', '.h') and self.fingerprint() == self.original:
                return 'is the same program'
            caught = self.failing_test(mutation.tests, folder) if mutation.tests else None
            for tests in self.rings(mutation.file) if folder == BUILD else []:
                caught = caught or self.failing_test(tests, folder)
            if not caught:
                return 'SURVIVES'
            test, how = caught
            self.caught[mutation.file].add(test)
            return f'caught by {test}' if how == 'Failed' else f'caught by {test}: {how}'
        finally:
            path.write_text(right)
