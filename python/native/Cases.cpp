// The types Cases (columns of cases as one struct array) and CaseStream (such arrays, one after the other).

#include <array>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>

#include "Engine.h"

namespace nbscore::python {
namespace {

PyObject* casesType = nullptr;
PyObject* streamType = nullptr;

/// Bytes of a value of a format; 0 for those that are counted otherwise.
std::size_t WidthOf(std::string_view format) {
    if (format == "c" || format == "C") return 1;
    if (format == "s" || format == "S") return 2;
    if (format == "i" || format == "I" || format == "f") return 4;
    return format == "l" || format == "L" || format == "g" ? 8 : 0;
}

/// One column, or the dictionary of one.
class BuiltColumn {
public:
    ArrowSchema schema = {};
    ArrowArray array = {};

    /// Takes what `(format, length, buffers, dictionary)` holds. Answers whether it did; else an error is set.
    bool Take(const char* columnName, PyObject* described) {
        const char* formatGiven = nullptr;
        Py_ssize_t length = 0;
        PyObject* given = nullptr;
        PyObject* described2 = nullptr;
        if (!PyArg_ParseTuple(described, "snOO", &formatGiven, &length, &given, &described2)) return false;
        name = columnName;
        format = formatGiven;
        const Py_ssize_t numBuffers = PyTuple_Size(given);
        if (numBuffers < 0 || numBuffers > 3) return false;
        for (Py_ssize_t i = 0; i < numBuffers; ++i) {
            PyObject* const buffer = PyTuple_GetItem(given, i);
            if (buffer == Py_None) continue;
            if (!held[static_cast<std::size_t>(i)].Take(buffer)) return false;
            buffers[static_cast<std::size_t>(i)] = held[static_cast<std::size_t>(i)].Get();
        }
        if (!AreLongEnough(static_cast<std::size_t>(length))) {
            PyErr_Format(PyExc_ValueError, "The buffers of \"%s\" are too short.", columnName);
            return false;
        }
        schema.format = format.c_str();
        schema.name = name.c_str();
        schema.flags = ARROW_FLAG_NULLABLE;
        schema.release = [](ArrowSchema* self) { self->release = nullptr; };
        array.length = length;
        array.null_count = buffers[0] == nullptr ? 0 : -1;
        array.n_buffers = numBuffers;
        array.buffers = buffers.data();
        array.release = [](ArrowArray* self) { self->release = nullptr; };
        if (described2 == Py_None) return true;
        dictionary = std::make_unique<BuiltColumn>();
        if (!dictionary->Take("", described2)) return false;
        schema.dictionary = &dictionary->schema;
        array.dictionary = &dictionary->array;
        return true;
    }

private:
    bool AreLongEnough(std::size_t length) const {
        const std::size_t numBits = (length + 7) / 8;
        if (buffers[0] != nullptr && held[0].GetSize() < numBits) return false;
        if (format == "b") return held[1].GetSize() >= numBits;
        if (const std::size_t width = WidthOf(format)) return held[1].GetSize() / width >= length;
        if (format != "U") return format == "n";
        if (held[1].GetSize() / sizeof(std::int64_t) <= length) return false;
        std::int64_t end = 0;
        std::memcpy(&end, static_cast<const std::int64_t*>(held[1].Get()) + length, sizeof end);
        return end >= 0 && held[2].GetSize() >= static_cast<std::size_t>(end);
    }

    std::string name;
    std::string format;
    std::array<Bytes, 3> held;
    std::array<const void*, 3> buffers = {};
    std::unique_ptr<BuiltColumn> dictionary;
};

/// Columns that Python holds.
class BuiltCases : public CaseArray {
public:
    bool Add(const char* name, PyObject* described) { return columns.emplace_back().Take(name, described); }

    void Finish(std::int64_t size) {
        for (BuiltColumn& column : columns) {
            schemas.push_back(&column.schema);
            arrays.push_back(&column.array);
        }
        schema.format = "+s";
        schema.name = "";
        schema.n_children = static_cast<std::int64_t>(columns.size());
        schema.children = schemas.data();
        schema.release = [](ArrowSchema* self) { self->release = nullptr; };
        array.length = size;
        array.n_buffers = 1;
        array.buffers = &noBuffer;
        array.n_children = schema.n_children;
        array.children = arrays.data();
        array.release = [](ArrowArray* self) { self->release = nullptr; };
    }

    const ArrowSchema& GetSchema() const override { return schema; }
    const ArrowArray& GetArray() const override { return array; }

private:
    std::deque<BuiltColumn> columns;
    std::vector<ArrowSchema*> schemas;
    std::vector<ArrowArray*> arrays;
    const void* noBuffer = nullptr;
    ArrowSchema schema = {};
    ArrowArray array = {};
};

/// An array that another library gave.
class GivenCases : public CaseArray {
public:
    explicit GivenCases(std::shared_ptr<Owned<ArrowSchema>> sharedSchema) : schema(std::move(sharedSchema)) {}

    const ArrowSchema& GetSchema() const override { return schema->held; }
    const ArrowArray& GetArray() const override { return array.held; }

    std::shared_ptr<Owned<ArrowSchema>> schema;
    Owned<ArrowArray> array;
};

struct CasesObject {
    PyObject_HEAD CaseArray* cases;
};

PyObject* MakeCases(std::unique_ptr<CaseArray> cases) {
    auto* const object = PyObject_New(CasesObject, reinterpret_cast<PyTypeObject*>(casesType));
    if (object == nullptr) return nullptr;
    object->cases = cases.release();
    return reinterpret_cast<PyObject*>(object);
}

void DeleteCases(PyObject* self) {
    const KeptError error;
    PyTypeObject* const type = Py_TYPE(self);
    delete reinterpret_cast<CasesObject*>(self)->cases;
    PyObject_Free(self);
    Py_DECREF(type);
}

Py_ssize_t CountCases(PyObject* self) {
    return static_cast<Py_ssize_t>(reinterpret_cast<CasesObject*>(self)->cases->GetArray().length);
}

PyObject* CasesOfColumns(PyObject*, PyObject* arguments) {
    return Guarded([&]() -> PyObject* {
        Py_ssize_t size = 0;
        PyObject* columns = nullptr;
        if (!PyArg_ParseTuple(arguments, "nO", &size, &columns)) return nullptr;
        auto cases = std::make_unique<BuiltCases>();
        for (Py_ssize_t i = 0; i < PyList_Size(columns); ++i) {
            const char* name = nullptr;
            PyObject* described = nullptr;
            if (!PyArg_ParseTuple(PyList_GetItem(columns, i), "sO", &name, &described)) return nullptr;
            if (!cases->Add(name, described)) return nullptr;
        }
        if (PyErr_Occurred() != nullptr) return nullptr;
        cases->Finish(size);
        return MakeCases(std::move(cases));
    });
}

/// What a capsule holds, moved out of it.
template <typename Struct>
bool TakeFrom(PyObject* capsule, const char* name, Struct& taken) {
    auto* const held = static_cast<Struct*>(PyCapsule_GetPointer(capsule, name));
    if (held == nullptr) return false;
    if (held->release == nullptr) {
        PyErr_Format(PyExc_ValueError, "The %s was taken by someone else.", name);
        return false;
    }
    taken = *held;
    held->release = nullptr;
    return true;
}

PyObject* CasesOfArrow(PyObject*, PyObject* pair) {
    return Guarded([&]() -> PyObject* {
        PyObject* schema = nullptr;
        PyObject* array = nullptr;
        if (!PyArg_ParseTuple(pair, "OO", &schema, &array)) return nullptr;
        auto cases = std::make_unique<GivenCases>(std::make_shared<Owned<ArrowSchema>>());
        if (!TakeFrom(schema, "arrow_schema", cases->schema->held)) return nullptr;
        if (!TakeFrom(array, "arrow_array", cases->array.held)) return nullptr;
        return MakeCases(std::move(cases));
    });
}

PyMethodDef caseMethods[] = {
    {"of_columns", CasesOfColumns, METH_VARARGS | METH_STATIC,
     PyDoc_STR("of_columns(length, [(name, (format, length, buffers, dictionary)), ...]) -> Cases")},
    {"of_arrow", CasesOfArrow, METH_VARARGS | METH_STATIC,
     PyDoc_STR("of_arrow(schema, array) -> Cases; takes what the capsules hold")},
    {nullptr, nullptr, 0, nullptr}};

PyType_Slot caseSlots[] = {{Py_tp_dealloc, reinterpret_cast<void*>(DeleteCases)},
                           {Py_sq_length, reinterpret_cast<void*>(CountCases)},
                           {Py_tp_methods, caseMethods},
                           {0, nullptr}};
PyType_Spec caseSpec = {"nbscore._engine.Cases", sizeof(CasesObject), 0,
                        Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, caseSlots};

/// Arrays that a stream gives, each when it is asked for.
struct CaseStream {
    Owned<ArrowArrayStream> stream;
    std::shared_ptr<Owned<ArrowSchema>> schema = std::make_shared<Owned<ArrowSchema>>();
};

struct StreamObject {
    PyObject_HEAD CaseStream* stream;
};

PyObject* RaiseOfStream(ArrowArrayStream& stream, int fault) {
    const char* const reason = stream.get_last_error(&stream);
    const Ref made(
        PyObject_CallFunction(PyExc_OSError, "is", fault, reason == nullptr ? "The stream of cases failed." : reason));
    if (made) PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(made.Get())), made.Get());
    return nullptr;
}

PyObject* StreamOfArrow(PyObject*, PyObject* capsule) {
    return Guarded([&]() -> PyObject* {
        auto taken = std::make_unique<CaseStream>();
        ArrowArrayStream& stream = taken->stream.held;
        if (!TakeFrom(capsule, "arrow_array_stream", stream)) return nullptr;
        const int fault = [&] {
            const WithoutLock others;
            return stream.get_schema(&stream, &taken->schema->held);
        }();
        if (fault != 0) {
            taken->schema->held.release = nullptr;
            return RaiseOfStream(stream, fault);
        }
        auto* const object = PyObject_New(StreamObject, reinterpret_cast<PyTypeObject*>(streamType));
        if (object == nullptr) return nullptr;
        object->stream = taken.release();
        return reinterpret_cast<PyObject*>(object);
    });
}

PyObject* NextOfStream(PyObject* self) {
    return Guarded([&]() -> PyObject* {
        CaseStream& source = *reinterpret_cast<StreamObject*>(self)->stream;
        auto cases = std::make_unique<GivenCases>(source.schema);
        const int fault = [&] {
            const WithoutLock others;
            return source.stream.held.get_next(&source.stream.held, &cases->array.held);
        }();
        if (fault != 0) {
            // What a stream leaves behind when it fails is not to be released.
            cases->array.held.release = nullptr;
            return RaiseOfStream(source.stream.held, fault);
        }
        if (cases->array.held.release == nullptr) return nullptr;
        return MakeCases(std::move(cases));
    });
}

void DeleteStream(PyObject* self) {
    const KeptError error;
    PyTypeObject* const type = Py_TYPE(self);
    delete reinterpret_cast<StreamObject*>(self)->stream;
    PyObject_Free(self);
    Py_DECREF(type);
}

PyMethodDef streamMethods[] = {{"of_arrow", StreamOfArrow, METH_O | METH_STATIC,
                                PyDoc_STR("of_arrow(capsule) -> CaseStream; takes what the capsule holds")},
                               {nullptr, nullptr, 0, nullptr}};
PyType_Slot streamSlots[] = {{Py_tp_dealloc, reinterpret_cast<void*>(DeleteStream)},
                             {Py_tp_iter, reinterpret_cast<void*>(PyObject_SelfIter)},
                             {Py_tp_iternext, reinterpret_cast<void*>(NextOfStream)},
                             {Py_tp_methods, streamMethods},
                             {0, nullptr}};
PyType_Spec streamSpec = {"nbscore._engine.CaseStream", sizeof(StreamObject), 0,
                          Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, streamSlots};

}  // namespace

const CaseArray* CasesOf(PyObject* object) {
    if (PyObject_TypeCheck(object, reinterpret_cast<PyTypeObject*>(casesType)))
        return reinterpret_cast<CasesObject*>(object)->cases;
    PyErr_SetString(PyExc_TypeError, "Cases are needed.");
    return nullptr;
}

bool AddCaseTypes(PyObject* module) {
    casesType = AddType(module, caseSpec, "Cases");
    streamType = AddType(module, streamSpec, "CaseStream");
    return casesType != nullptr && streamType != nullptr;
}

}  // namespace nbscore::python
