"""Tables that speak Arrow, made and read by ctypes: stands for the libraries whose tables come in practice."""

import ctypes

import numpy as np


class Schema(ctypes.Structure):
    pass


class Array(ctypes.Structure):
    pass


class Stream(ctypes.Structure):
    pass


ReleaseSchema = ctypes.CFUNCTYPE(None, ctypes.POINTER(Schema))
ReleaseArray = ctypes.CFUNCTYPE(None, ctypes.POINTER(Array))
GetSchema = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(Stream), ctypes.POINTER(Schema))
GetNext = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(Stream), ctypes.POINTER(Array))
GetLastError = ctypes.CFUNCTYPE(ctypes.c_void_p, ctypes.POINTER(Stream))
ReleaseStream = ctypes.CFUNCTYPE(None, ctypes.POINTER(Stream))

Schema._fields_ = [("format", ctypes.c_char_p), ("name", ctypes.c_char_p), ("metadata", ctypes.c_char_p),
                   ("flags", ctypes.c_int64), ("n_children", ctypes.c_int64),
                   ("children", ctypes.POINTER(ctypes.POINTER(Schema))), ("dictionary", ctypes.POINTER(Schema)),
                   ("release", ReleaseSchema), ("private_data", ctypes.c_void_p)]
Array._fields_ = [("length", ctypes.c_int64), ("null_count", ctypes.c_int64), ("offset", ctypes.c_int64),
                  ("n_buffers", ctypes.c_int64), ("n_children", ctypes.c_int64),
                  ("buffers", ctypes.POINTER(ctypes.c_void_p)), ("children", ctypes.POINTER(ctypes.POINTER(Array))),
                  ("dictionary", ctypes.POINTER(Array)), ("release", ReleaseArray), ("private_data", ctypes.c_void_p)]
Stream._fields_ = [("get_schema", GetSchema), ("get_next", GetNext), ("get_last_error", GetLastError),
                   ("release", ReleaseStream), ("private_data", ctypes.c_void_p)]

_new_capsule = ctypes.pythonapi.PyCapsule_New
_new_capsule.restype = ctypes.py_object
_new_capsule.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_void_p]
_get_pointer = ctypes.pythonapi.PyCapsule_GetPointer
_get_pointer.restype = ctypes.c_void_p
_get_pointer.argtypes = [ctypes.py_object, ctypes.c_char_p]


class Keeper:
    """Keeps what structs point to until they are released, and counts releases."""

    def __init__(self):
        self.kept = []
        self.released = 0

    def keep(self, thing):
        self.kept.append(thing)
        return thing

    def bytes(self, content):
        """The address of a copy of these bytes."""
        return ctypes.cast(self.keep(ctypes.create_string_buffer(bytes(content), len(content) + 1)), ctypes.c_void_p)

    def pointers(self, kind, things):
        return self.keep((ctypes.POINTER(kind) * max(len(things), 1))(*[ctypes.pointer(thing) for thing in things]))

    def on_release(self, kind):
        def release(pointer):
            self.released += 1
            pointer.contents.release = kind()

        return self.keep(kind(release))


def text_parts(texts, large=False):
    offsets = np.cumsum([0] + [len((text or "").encode()) for text in texts]).astype("<i8" if large else "<i4")
    return offsets.tobytes(), "".join(text or "" for text in texts).encode()


class Column:
    """A column of values, None where there is none.

    kind: "u", "U", "g", "l", "b", "n", or such a kind of dictionary indices with the kind of what they stand for behind
    it ("cu": bytes as indices of texts). offset: entries in front that are not part of it.
    """

    def __init__(self, name, kind, values, offset=0):
        self.name = name
        self.kind = kind
        self.values = list(values)
        self.offset = offset

    def fill(self, keeper, schema, array):
        values = [None] * self.offset + self.values
        there = [value is not None for value in values]
        schema.name = self.name.encode()
        schema.format = self.kind[:1].encode()
        schema.flags = 2
        schema.release = keeper.on_release(ReleaseSchema)
        array.length = len(self.values)
        array.offset = self.offset
        array.null_count = self.values.count(None)
        array.release = keeper.on_release(ReleaseArray)
        bits = keeper.bytes(np.packbits(np.array(there, bool), bitorder="little").tobytes())
        if len(self.kind) == 2:
            known = list(dict.fromkeys(value for value in values if value is not None))
            codes = [0 if value is None else known.index(value) for value in values]
            content = [keeper.bytes(np.array(codes, {"c": "i1", "i": "i4", "L": "u8"}[self.kind[0]]).tobytes())]
            inner_schema, inner_array = keeper.keep(Schema()), keeper.keep(Array())
            Column("", self.kind[1], known).fill(keeper, inner_schema, inner_array)
            schema.dictionary = ctypes.pointer(inner_schema)
            array.dictionary = ctypes.pointer(inner_array)
        elif self.kind in "uU":
            content = [keeper.bytes(part) for part in text_parts(values, self.kind == "U")]
        elif self.kind == "b":
            truths = np.array([bool(value) for value in values], bool)
            content = [keeper.bytes(np.packbits(truths, bitorder="little").tobytes())]
        elif self.kind == "n":
            content = None
        else:
            numbers = [0 if value is None else value for value in values]
            content = [keeper.bytes(np.array(numbers, {"g": "f8", "l": "i8"}[self.kind]).tobytes())]
        buffers = [] if content is None else [bits, *content]
        array.n_buffers = len(buffers)
        array.buffers = keeper.keep((ctypes.c_void_p * max(len(buffers), 1))(*buffers))


def _fill_struct(keeper, columns, schema, array):
    schemas, arrays = [], []
    for column in columns:
        schemas.append(keeper.keep(Schema()))
        arrays.append(keeper.keep(Array()))
        column.fill(keeper, schemas[-1], arrays[-1])
    schema.format = b"+s"
    schema.name = b""
    schema.n_children = array.n_children = len(columns)
    schema.children = keeper.pointers(Schema, schemas)
    array.children = keeper.pointers(Array, arrays)
    schema.release = keeper.on_release(ReleaseSchema)
    array.release = keeper.on_release(ReleaseArray)
    array.length = len(columns[0].values) if columns else 0
    array.n_buffers = 1
    array.buffers = keeper.keep((ctypes.c_void_p * 1)(None))


class ArrayTable:
    """A table that can be taken as one array."""

    def __init__(self, columns):
        self.columns = columns
        self.keeper = Keeper()

    def __arrow_c_array__(self, requested_schema=None):
        schema, array = self.keeper.keep(Schema()), self.keeper.keep(Array())
        _fill_struct(self.keeper, self.columns, schema, array)
        return (_new_capsule(ctypes.addressof(schema), self.keeper.keep(b"arrow_schema"), None),
                _new_capsule(ctypes.addressof(array), self.keeper.keep(b"arrow_array"), None))


class StreamTable:
    """A table that comes in chunks.

    chunks: a list of lists of columns. fails_at: the chunk at which reading fails, if any.
    """

    def __init__(self, chunks, fails_at=None):
        self.chunks = chunks
        self.keeper = Keeper()
        self.fails_at = fails_at
        self.given = 0

    def __arrow_c_stream__(self, requested_schema=None):
        keeper = self.keeper
        stream = keeper.keep(Stream())
        self.given = 0

        reason = keeper.bytes(b"The disk is gone.")

        def get_schema(_, out):
            _fill_struct(keeper, self.chunks[0], out.contents, Array())
            return 0

        def get_next(_, out):
            ctypes.memset(out, 0, ctypes.sizeof(Array))
            if self.given == self.fails_at:
                return 5
            if self.given < len(self.chunks):
                _fill_struct(keeper, self.chunks[self.given], Schema(), out.contents)
            self.given += 1
            return 0

        stream.get_schema = keeper.keep(GetSchema(get_schema))
        stream.get_next = keeper.keep(GetNext(get_next))
        stream.get_last_error = keeper.keep(GetLastError(lambda _: reason.value))
        stream.release = keeper.on_release(ReleaseStream)
        return _new_capsule(ctypes.addressof(stream), keeper.keep(b"arrow_array_stream"), None)


class BrokenStream(Exception):
    pass


def _read_column(schema, array):
    """A column of texts or doubles as a list."""
    start, stop = array.offset, array.offset + array.length
    valid = [True] * stop
    if array.null_count != 0 and array.buffers[0]:
        bits = np.frombuffer(ctypes.string_at(array.buffers[0], (stop + 7) // 8), np.uint8)
        valid = np.unpackbits(bits, bitorder="little")[:stop].astype(bool)
    if schema.format == b"u":
        ends = np.frombuffer(ctypes.string_at(array.buffers[1], 4 * (stop + 1)), "<i4")
        content = ctypes.string_at(array.buffers[2], int(ends[-1])) if array.buffers[2] else b""
        values = [content[ends[i]:ends[i + 1]].decode() for i in range(stop)]
    else:
        assert schema.format == b"g", schema.format
        values = np.frombuffer(ctypes.string_at(array.buffers[1], 8 * stop), "<f8").tolist()
    return [values[i] if valid[i] else None for i in range(start, stop)]


def _read_struct(schema, array, columns):
    assert schema.format == b"+s" and schema.n_children == array.n_children
    for i in range(schema.n_children):
        child = schema.children[i].contents
        columns.setdefault(child.name.decode(), []).extend(_read_column(child, array.children[i].contents))


def read_arrow(table):
    """What a table that speaks Arrow holds: a dict of lists. A struct that was taken is released."""
    columns = {}
    if not hasattr(table, "__arrow_c_stream__"):
        schema, array = table.__arrow_c_array__()
        taken = [Schema.from_address(_get_pointer(schema, b"arrow_schema")),
                 Array.from_address(_get_pointer(array, b"arrow_array"))]
        _read_struct(*taken, columns)
        for struct in taken:
            struct.release(ctypes.byref(struct))
        return columns
    capsule = table.__arrow_c_stream__()
    stream = Stream.from_address(_get_pointer(capsule, b"arrow_array_stream"))
    schema = Schema()
    fault = stream.get_schema(ctypes.byref(stream), ctypes.byref(schema))
    while fault == 0:
        array = Array()
        fault = stream.get_next(ctypes.byref(stream), ctypes.byref(array))
        if fault != 0 or not array.release:
            break
        _read_struct(schema, array, columns)
        array.release(ctypes.byref(array))
    reason = stream.get_last_error(ctypes.byref(stream)) if fault != 0 else None
    message = ctypes.string_at(reason).decode() if reason else ""  # it goes with the stream
    if schema.release:
        schema.release(ctypes.byref(schema))
    stream.release(ctypes.byref(stream))
    if fault != 0:
        raise BrokenStream(fault, message)
    return columns


def read_array(table):
    """The same of a single array."""

    class OnlyArray:
        __arrow_c_array__ = staticmethod(table.__arrow_c_array__)

    return read_arrow(OnlyArray())
