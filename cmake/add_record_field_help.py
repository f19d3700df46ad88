"""Adds help strings to the fields of the records in a type library written
by widl, which takes no help strings on record fields.

The help string of each field is the trailing comment of its line in the
IDL. A type library (the "MSFT" format) keeps its strings in one segment and
the description of each type's members in blocks after all segments; a
member record's length says which optional parts it has. This appends the
help strings to the string segment, lengthens each field record of the
records by its help context and help string offset, and moves every offset
that points past the growth.

usage: add_record_field_help.py TLB IDL
"""
import os
import struct
import sys

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '..', 'tools'))
import idl_entries  # noqa: E402

HEADER_SIZE = 0x54
HELP_DLL_FLAG = 0x100
SEGMENTS = 15
STRING_SEGMENT = 8
TYPEINFO_SIZE = 100
TKIND_RECORD = 1
BASE_RECORD = 0x14      # a field record without optional parts
HELP_RECORD = 0x1C      # with its help context and help string


def u32(data, at):
    return struct.unpack_from('<i', data, at)[0]


def encoded(text):
    """A string as the string segment holds it: a 16-bit length, the bytes,
    padded with 0x57 to a multiple of four."""
    raw = text.encode('latin-1')
    entry = struct.pack('<H', len(raw)) + raw
    return entry + b'\x57' * (-len(entry) % 4)


def main(tlb_path, idl_path):
    data = bytearray(open(tlb_path, 'rb').read())
    if data[:4] != b'MSFT':
        sys.exit(f'{tlb_path}: not an MSFT type library')
    typeinfo_count = u32(data, 0x20)
    directory = HEADER_SIZE + (4 if u32(data, 0x14) & HELP_DLL_FLAG else 0) + 4 * typeinfo_count
    segments = [list(struct.unpack_from('<4i', data, directory + 16 * i)) for i in range(SEGMENTS)]
    typeinfos = segments[0][0]
    blocks_start = max(offset + length for offset, length, *_ in segments if offset >= 0)

    records = dict(idl_entries.read(idl_path)['records'])
    help_texts = bytearray()
    string_end = segments[STRING_SEGMENT][1]
    # Per record typeinfo: its member block's offset and its fields' help offsets.
    patched = {}
    for index in range(typeinfo_count):
        info = typeinfos + index * TYPEINFO_SIZE
        if u32(data, info) & 0xF != TKIND_RECORD:
            continue
        name_offset = u32(data, info + 0x34)
        name_entry = segments[7][0] + name_offset
        name = data[name_entry + 12:name_entry + 12 + (data[name_entry + 8])].decode('latin-1')
        fields = records.pop(name, None)
        if fields is None:
            sys.exit(f'{tlb_path}: record {name} is not in {idl_path}')
        offsets = []
        for _, _, text in fields[1]:
            offsets.append(string_end + len(help_texts) if text else -1)
            help_texts += encoded(text) if text else b''
        patched[u32(data, info + 4)] = (info, offsets)
    if records:
        sys.exit(f'{tlb_path}: records {", ".join(records)} not found')

    # The member blocks, rebuilt: the records' blocks with longer field records.
    old_blocks = data[blocks_start:]
    new_blocks = bytearray()
    moved = {}  # old block offset -> new
    position = blocks_start
    for block_at in sorted({u32(data, typeinfos + i * TYPEINFO_SIZE + 4) for i in range(typeinfo_count)}
                           | {len(data)}):
        if block_at < blocks_start:
            continue
        new_blocks += old_blocks[position - blocks_start:block_at - blocks_start]
        moved[block_at] = blocks_start + len(new_blocks)
        if block_at in patched:
            block_end = block_at + 4 + u32(data, block_at)
            elements = u32(data, patched[block_at][0] + 0x18)
            block_end += 12 * ((elements >> 16) + (elements & 0xFFFF))
            new_blocks += record_block(data, block_at, patched[block_at][1])
            position = block_end
        else:
            position = block_at
    growth = len(help_texts)

    # Segments after the string segment, and every member block, move.
    string_at = segments[STRING_SEGMENT][0]
    for i, segment in enumerate(segments):
        if segment[0] > string_at:
            segment[0] += growth
        struct.pack_into('<4i', data, directory + 16 * i, *segment)
    segments[STRING_SEGMENT][1] += growth
    struct.pack_into('<4i', data, directory + 16 * STRING_SEGMENT, *segments[STRING_SEGMENT])
    for i in range(typeinfo_count):
        at = typeinfos + i * TYPEINFO_SIZE + 4
        struct.pack_into('<i', data, at, moved.get(u32(data, at), u32(data, at)) + growth)

    insert_at = string_at + string_end
    result = data[:insert_at] + help_texts + data[insert_at:blocks_start] + new_blocks
    open(tlb_path, 'wb').write(result)


def record_block(data, block_at, help_offsets):
    """A record's member block with each field record lengthened by its help
    context (0) and help string offset. The block is its length, the field
    records, then the member ids, names and record offsets, one each."""
    length = u32(data, block_at)
    count = len(help_offsets)
    records = bytearray()
    at = block_at + 4
    starts = []
    for help_offset in help_offsets:
        info = u32(data, at)
        if info & 0xFF != BASE_RECORD:
            sys.exit('a field record already has optional parts')
        starts.append(len(records))
        records += struct.pack('<i', (info & ~0xFF) | HELP_RECORD) + data[at + 4:at + BASE_RECORD]
        records += struct.pack('<ii', 0, help_offset)
        at += BASE_RECORD
    if at != block_at + 4 + length:
        sys.exit('a record block holds more than its fields')
    tail = data[at:at + 8 * count]  # member ids and names stay as they are
    return struct.pack('<i', len(records)) + records + tail + struct.pack(f'<{count}i', *starts)


if __name__ == '__main__':
    main(sys.argv[1], sys.argv[2])
