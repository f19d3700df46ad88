"""Reads the entries of the control's IDL: the methods and properties of the
dual interface, the events, and the fields of the two records.

Shared by the reference check, so that the reference and the type library
are compared through one reading of the IDL."""
import re

_DECL = re.compile(r'\[(?P<attrs>[^\]]*)\]\s*HRESULT\s+(?P<name>\w+)\s*\((?P<params>.*?)\)\s*;', re.S)
_HELP = re.compile(r',?\s*helpstring\("(?P<text>[^"]*)"\)')


def _block(text, opener):
    start = text.index(opener)
    brace = text.index('{', start)
    depth = 0
    for i in range(brace, len(text)):
        depth += {'{': 1, '}': -1}.get(text[i], 0)
        if depth == 0:
            return text[brace + 1:i]
    raise ValueError('unclosed block ' + opener)


def _normal(text):
    return ' '.join(text.split())


def declarations(text, opener):
    """(name, declaration without its help string, help string) per entry."""
    entries = []
    for m in _DECL.finditer(_block(text, opener)):
        attrs = m.group('attrs')
        help_match = _HELP.search(attrs)
        bare = _normal(_HELP.sub('', m.group(0), count=1))
        entries.append((m.group('name'), bare, help_match.group('text') if help_match else None))
    return entries


_FIELD = re.compile(r'^\s*(?P<type>\w+) (?P<name>\w+);\s*(?://\s*(?P<help>.*))?$')


def record(text, name):
    """(help string, [(type, field, help string)]) of a record typedef. A
    field's help string is its trailing comment: widl takes no help strings
    on fields, so the build adds them to the type library from there."""
    m = re.search(r'\[\s*uuid\([^)]*\),\s*helpstring\("([^"]*)"\)\s*\]\s*typedef struct ' + name +
                  r'\s*\{(.*?)\}', text, re.S)
    fields = [(f.group('type'), f.group('name'), (f.group('help') or '').strip())
              for f in map(_FIELD.match, m.group(2).strip().splitlines()) if f]
    return m.group(1), fields


def read(path):
    raw = open(path, encoding='utf-8').read()
    text = re.sub(r'//[^\n]*', '', raw)
    return {
        'interface': declarations(text, 'interface IVX_Graph : IDispatch'),
        'events': declarations(text, 'dispinterface _IVX_GraphEvents'),
        'records': {name: record(raw, name) for name in ('AxisProps', 'DatasetProps')},
    }
