"""Holds the C interface to a database that makes and takes Arrow columns and that nobody here wrote: the cases of the
examples, stored in it as columns of several types, go to libnbscore as a stream, and the scores' stream goes back into
it, where they must equal those that the command writes.

Usage: columns.py LIBNBSCORE COMMAND LIBDUCKDB EXAMPLES
"""

import ctypes
import subprocess
import sys
import tempfile
from ctypes import CFUNCTYPE, POINTER, Structure, byref, c_char_p, c_int, c_int64, c_uint64, c_void_p


class Schema(Structure):
    pass


Schema._fields_ = [
    ("format", c_char_p), ("name", c_char_p), ("metadata", c_char_p), ("flags", c_int64), ("n_children", c_int64),
    ("children", POINTER(POINTER(Schema))), ("dictionary", POINTER(Schema)),
    ("release", CFUNCTYPE(None, POINTER(Schema))), ("private_data", c_void_p)]


class Array(Structure):
    pass


Array._fields_ = [
    ("length", c_int64), ("null_count", c_int64), ("offset", c_int64), ("n_buffers", c_int64), ("n_children", c_int64),
    ("buffers", c_void_p), ("children", POINTER(POINTER(Array))), ("dictionary", POINTER(Array)),
    ("release", CFUNCTYPE(None, POINTER(Array))), ("private_data", c_void_p)]


class Stream(Structure):
    pass


Stream._fields_ = [
    ("get_schema", CFUNCTYPE(c_int, POINTER(Stream), POINTER(Schema))),
    ("get_next", CFUNCTYPE(c_int, POINTER(Stream), POINTER(Array))),
    ("get_last_error", CFUNCTYPE(c_char_p, POINTER(Stream))),
    ("release", CFUNCTYPE(None, POINTER(Stream))), ("private_data", c_void_p)]


class Error(Structure):
    _fields_ = [("kind", ctypes.c_int32), ("code", ctypes.c_int32), ("line", c_uint64), ("column", c_uint64),
                ("message", c_char_p)]


class Result(Structure):
    """Of a statement; only calls look into it."""
    _fields_ = [("unknown", c_void_p * 8)]


class Database:
    """A database in memory."""

    def __init__(self, library):
        self.calls = ctypes.CDLL(library)
        self.calls.duckdb_result_error.restype = c_char_p
        self.calls.duckdb_query_arrow_error.restype = c_char_p
        self.calls.duckdb_value_varchar.restype = c_char_p  # never freed: there are few
        self.calls.duckdb_value_varchar.argtypes = [c_void_p, c_uint64, c_uint64]
        self.calls.duckdb_row_count.restype = c_uint64
        database = c_void_p()
        self.connection = c_void_p()
        self.require(self.calls.duckdb_open(None, byref(database)))
        self.require(self.calls.duckdb_connect(database, byref(self.connection)))

    @staticmethod
    def require(status):
        if status != 0:
            raise RuntimeError("a call of the database failed")

    def do(self, statement):
        """The first two columns of what a statement gives, as texts."""
        result = Result()
        if self.calls.duckdb_query(self.connection, statement.encode(), byref(result)) != 0:
            raise RuntimeError(self.calls.duckdb_result_error(byref(result)).decode())
        rows = [tuple((self.calls.duckdb_value_varchar(byref(result), column, row) or b"").decode()
                      for column in (0, 1)) for row in range(self.calls.duckdb_row_count(byref(result)))]
        self.calls.duckdb_destroy_result(byref(result))
        return rows

    def count(self, statement):
        return int(self.do(statement)[0][0])

    def columns(self, table):
        """The names and types of a table's columns."""
        return self.do(f"DESCRIBE {table}")

    def stream(self, statement):
        """A stream of what a statement gives."""
        result = c_void_p()
        if self.calls.duckdb_query_arrow(self.connection, statement.encode(), byref(result)) != 0:
            raise RuntimeError(self.calls.duckdb_query_arrow_error(result).decode())

        def get_schema(_, out):
            return self.calls.duckdb_query_arrow_schema(result, byref(out))

        def get_next(_, out):
            ctypes.memset(out, 0, ctypes.sizeof(Array))
            return self.calls.duckdb_query_arrow_array(result, byref(out))

        def release(stream):
            self.calls.duckdb_destroy_arrow(byref(result))
            stream.contents.release = type(stream.contents.release)()

        types = dict(Stream._fields_)
        made = Stream(types["get_schema"](get_schema), types["get_next"](get_next),
                      types["get_last_error"](lambda _: b"the database failed"), types["release"](release), None)
        # Structures do not keep the functions that they point to.
        self.kept = made.get_schema, made.get_next, made.get_last_error, made.release
        return made

    def take(self, table, stream):
        """Makes a table of a stream."""
        self.require(self.calls.duckdb_arrow_scan(self.connection, b"arriving", byref(stream)))
        self.do(f"CREATE OR REPLACE TABLE {table} AS SELECT * FROM arriving")
        self.do("DROP VIEW arriving")


class Scorer:
    def __init__(self, library, document):
        self.calls = ctypes.CDLL(library)
        self.model = c_void_p()
        error = POINTER(Error)()
        self.require(self.calls.nbscore_open_file(document.encode(), None, byref(self.model), byref(error)), error)

    @staticmethod
    def require(kind, error):
        if kind != 0:
            raise RuntimeError(error.contents.message.decode())

    def score(self, cases):
        scores = Stream()
        error = POINTER(Error)()
        self.require(
            self.calls.nbscore_score_stream(self.model, None, byref(cases), byref(scores), byref(error)), error)
        return scores


def score_by_command(command, document, cases, folder):
    """Writes what the command makes of the cases, a file in CSV."""
    path = f"{folder}/scored.csv"
    subprocess.run([command, "score", document, cases, "-o", path, "--only-scores"], check=True, stderr=subprocess.DEVNULL)
    return path


# A document, and how its cases are made of the texts in a table, of which there are thousands of copies numbered by i.
SUBJECTS = [
    ("titanic", "titanic.pmml", "people.csv", "class, sex, CASE WHEN i % 7 = 0 THEN NULL ELSE age END AS age"),
    ("titanic", "titanic.pmml", "people.csv",
     "age::ages AS age, name, CASE WHEN i % 5 = 0 THEN NULL ELSE class END::classes AS class, sex"),
    ("iris", "iris.pmml", "flowers.csv",
     "petal_width::DOUBLE AS petal_width, flower, "
     "CASE WHEN i % 3 = 0 THEN NULL ELSE petal_length::DOUBLE END AS petal_length"),
    ("offers", "offers.pmml", "customers.csv",
     "(age::INTEGER + i % 40)::UTINYINT AS age, region, segment, (visits::INTEGER + i % 9)::BIGINT AS visits"),
]


def check(database, scorer, command, examples, folder, subject):
    """How many cases there are, none of which may differ."""
    example, document, table, columns = subject
    document = f"{examples}/{example}/{document}"
    database.do(f"CREATE OR REPLACE TABLE texts AS SELECT * FROM "
                f"read_csv('{examples}/{example}/{table}', all_varchar=true), range(2000) AS copies(i)")
    if "::ages" in columns:
        database.do("CREATE TYPE ages AS ENUM (SELECT DISTINCT age FROM texts)")
        database.do("CREATE TYPE classes AS ENUM (SELECT DISTINCT class FROM texts)")
    database.do(f"CREATE OR REPLACE TABLE cases AS SELECT {columns} FROM texts")
    database.do(f"COPY cases TO '{folder}/cases.csv' (HEADER)")
    scored = score_by_command(command, document, f"{folder}/cases.csv", folder)
    database.do(f"CREATE OR REPLACE TABLE expected AS SELECT * FROM read_csv('{scored}', all_varchar=true)")

    database.take("scored", scorer(document).score(database.stream("SELECT * FROM cases")))
    types = database.columns("scored")
    if [name for name, _ in types] != [name for name, _ in database.columns("expected")]:
        raise RuntimeError(f"{example}: the columns are {types}")
    differ = " OR ".join(f'scored."{name}" IS DISTINCT FROM CAST(expected."{name}" AS {kind})' for name, kind in types)
    wrong = database.count(f"SELECT count(*) FROM scored POSITIONAL JOIN expected WHERE {differ}")
    cases = database.count("SELECT count(*) FROM cases")
    scores = database.count("SELECT count(*) FROM scored")
    if wrong != 0 or scores != cases or cases == 0:
        raise RuntimeError(f"{example}: {cases} cases, {scores} scores, {wrong} of them wrong")
    return cases


def main(library, command, database_library, examples):
    total = 0
    for subject in SUBJECTS:
        with tempfile.TemporaryDirectory() as folder:
            total += check(Database(database_library), lambda document: Scorer(library, document), command, examples,
                           folder, subject)
    print(f"{total} cases of {len(SUBJECTS)} tables came from and went to a database, and were scored as by the command")


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
