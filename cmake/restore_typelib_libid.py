"""Restores the library id of a type library written by widl 7.

That widl writes the library's dispatch position (the "dispatchpos" of the
header, a small odd number) over the last byte of the library id when the
library holds a dispinterface beside an interface. This puts the id back,
finding it by its first 15 bytes.

usage: restore_typelib_libid.py TLB LIBID
"""
import sys
import uuid

path, libid = sys.argv[1], uuid.UUID(sys.argv[2]).bytes_le
data = bytearray(open(path, "rb").read())
start = data.find(libid[:15])
if start < 0 or data.find(libid[:15], start + 1) >= 0:
    sys.exit(f"{path}: library id {sys.argv[2]} not found exactly once")
data[start + 15] = libid[15]
open(path, "wb").write(data)
