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


def record(text, name):
    """(help string, [(type, field)]) of a record typedef."""
    m = re.search(r'\[\s*uuid\([^)]*\),\s*helpstring\("([^"]*)"\)\s*\]\s*typedef struct ' + name +
                  r'\s*\{(.*?)\}', text, re.S)
    fields = [tuple(_normal(line).rstrip(';').rsplit(' ', 1))
              for line in m.group(2).strip().splitlines() if line.strip()]
    return m.group(1), fields


def read(path):
    text = open(path, encoding='utf-8').read()
    text = re.sub(r'//[^\n]*', '', text)
    return {
        'interface': declarations(text, 'interface IVX_Graph : IDispatch'),
        'events': declarations(text, 'dispinterface _IVX_GraphEvents'),
        'records': {name: record(text, name) for name in ('AxisProps', 'DatasetProps')},
    }
