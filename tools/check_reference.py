"""Checks docs/reference.md against resources/zelgraph.idl, so that the two
cannot drift: every entry and event of the IDL has a section in the
reference that repeats its declaration and whose first line is its help
string; every record field appears in the record's table, in order, with its
offset, its type and its help string as the first sentence of its meaning; and the reference names nothing the IDL lacks.

Prints PASS or FAIL per check and "done" at the end, as the test command's
other check programs do. Usage: check_reference.py IDL REFERENCE"""
import re
import sys

import idl_entries

# Byte sizes of the field types on both targets (the records hold no pointers
# wider than 4 bytes apart from BSTR, which the layout below treats as 4: the
# offsets are those of the 32-bit layout that the records are specified in).
_SIZE = {'VARIANT': 16, 'long': 4, 'int': 4, 'short': 2, 'BSTR': 4}
_ALIGN = {'VARIANT': 8, 'long': 4, 'int': 4, 'short': 2, 'BSTR': 4}


def sections(text):
    """name -> (declarations, summary, body lines) of each '### name' section."""
    found = {}
    for chunk in re.split(r'^### ', text, flags=re.M)[1:]:
        lines = chunk.splitlines()
        name, body = lines[0].strip(), lines[1:]
        code = [' '.join(line.split()) for line in body if line.startswith('    ')]
        prose = [line for line in body if line.strip() and not line.startswith('    ')]
        found[name] = (code, prose[0] if prose else '', body)
    return found


def table_fields(body):
    """(offset, field, type, first sentence of the meaning) of each row of a
    section's field table."""
    rows = []
    for line in body:
        cells = [c.strip() for c in line.strip().strip('|').split('|')]
        if len(cells) >= 4 and cells[0].isdigit():
            meaning = cells[3]
            end = meaning.find('. ')
            rows.append((int(cells[0]), cells[1].strip('`'), cells[2], meaning if end < 0 else meaning[:end + 1]))
    return rows


def listed(names):
    return f' (not: {", ".join(sorted(set(names)))})' if names else ''


def layout(fields):
    offsets, at = [], 0
    for kind, *_ in fields:
        at = (at + _ALIGN[kind] - 1) // _ALIGN[kind] * _ALIGN[kind]
        offsets.append(at)
        at += _SIZE[kind]
    return offsets


def main(idl_path, reference_path):
    idl = idl_entries.read(idl_path)
    reference = sections(open(reference_path, encoding='utf-8').read())
    failures = 0

    def check(ok, what):
        nonlocal failures
        print(('PASS ' if ok else 'FAIL ') + what)
        failures += not ok

    named, undeclared, unhelped, mismatched = set(), [], [], []
    for name, declaration, help_text in idl['interface'] + idl['events']:
        named.add(name)
        code, summary, _ = reference.get(name, ([], None, []))
        if declaration not in code:
            undeclared.append(name)
        if not help_text:
            unhelped.append(name)
        elif help_text != summary:
            mismatched.append(name)
    check(not undeclared, 'every entry and event has a section repeating its declaration' + listed(undeclared))
    check(not unhelped, 'every entry and event has a help string in the IDL' + listed(unhelped))
    check(not mismatched, 'every help string is the first line of its section' + listed(mismatched))
    check(len(idl['interface']) == 95, 'the interface has 95 entries')
    check(len(idl['events']) == 5, 'the event interface has 5 events')

    for record, (help_text, fields) in idl['records'].items():
        named.add(record)
        section = reference.get(record)
        rows = table_fields(section[2]) if section else []
        expected = [(offset, name, kind, help_text)
                    for offset, (kind, name, help_text) in zip(layout(fields), fields)]
        check(section is not None and section[1] == help_text,
              f'{record}: its help string is the reference\'s first line')
        check(rows == expected, f'{record}: the reference lists its {len(fields)} fields '
                                'with their offsets, types and help strings')

    stray = sorted(set(reference) - named)
    check(not stray, 'the reference names nothing the IDL lacks' + listed(stray))
    print('done')
    return 1 if failures else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1], sys.argv[2]))
