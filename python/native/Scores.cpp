// The type Scores: columns of scores that Arrow's consumers take as often as they want.

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "Engine.h"

namespace nbscore::python {
namespace {

PyObject* scoresType = nullptr;

using Schema = std::shared_ptr<Owned<ArrowSchema>>;
using Array = std::shared_ptr<Owned<ArrowArray>>;

/// Shows a struct that is shared, its children too, each of which keeps what it lies in: consumers may take them apart.
template <typename Struct>
struct Shared {
    Shared(std::shared_ptr<Owned<Struct>> sharedWhole, std::size_t numChildren)
        : whole(std::move(sharedWhole)), children(numChildren) {}
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;
    ~Shared() {
        for (Struct& child : children) {
            if (child.release != nullptr) child.release(&child);
        }
    }

    std::shared_ptr<Owned<Struct>> whole;
    std::vector<Struct> children;
    std::vector<Struct*> pointers;
};

template <typename Struct>
void Show(const Struct& shown, const std::shared_ptr<Owned<Struct>>& whole, Struct& out) {
    auto parts = std::make_unique<Shared<Struct>>(whole, static_cast<std::size_t>(shown.n_children));
    for (std::size_t i = 0; i < parts->children.size(); ++i) {
        Show(*shown.children[i], whole, parts->children[i]);
        parts->pointers.push_back(&parts->children[i]);
    }
    out = shown;
    out.children = parts->pointers.data();
    out.release = [](Struct* self) {
        delete static_cast<Shared<Struct>*>(self->private_data);
        self->release = nullptr;
    };
    out.private_data = parts.release();
}

/// A stream of arrays that are there. Needs no lock.
struct ShownStream {
    Schema schema;
    std::vector<Array> arrays;
    std::size_t next = 0;

    static int GetSchema(ArrowArrayStream* self, ArrowSchema* out) {
        const ShownStream& stream = *static_cast<ShownStream*>(self->private_data);
        return Try([&] { Show(stream.schema->held, stream.schema, *out); });
    }
    static int GetNext(ArrowArrayStream* self, ArrowArray* out) {
        ShownStream& stream = *static_cast<ShownStream*>(self->private_data);
        *out = ArrowArray{};
        if (stream.next == stream.arrays.size()) return 0;
        return Try([&] {
            const Array& array = stream.arrays[stream.next];
            Show(array->held, array, *out);
            ++stream.next;
        });
    }
    static const char* GetLastError(ArrowArrayStream*) { return "Memory ran out."; }
    static void Release(ArrowArrayStream* self) {
        delete static_cast<ShownStream*>(self->private_data);
        self->release = nullptr;
    }

private:
    template <typename Work>
    static int Try(const Work& work) {
        try {
            work();
            return 0;
        } catch (...) {
            return ENOMEM;
        }
    }
};

struct Chunks {
    Schema schema;
    std::vector<Array> arrays;
};

struct ScoresObject {
    PyObject_HEAD Chunks* chunks;
};

const Chunks& ChunksOf(PyObject* self) {
    return *reinterpret_cast<ScoresObject*>(self)->chunks;
}

void DeleteScores(PyObject* self) {
    const KeptError error;
    PyTypeObject* const type = Py_TYPE(self);
    delete reinterpret_cast<ScoresObject*>(self)->chunks;
    PyObject_Free(self);
    Py_DECREF(type);
}

Py_ssize_t CountScores(PyObject* self) {
    Py_ssize_t count = 0;
    for (const Array& array : ChunksOf(self).arrays)
        count += static_cast<Py_ssize_t>(array->held.length);
    return count;
}

template <typename Struct>
void DeleteUntaken(PyObject* capsule) {
    const KeptError error;
    delete static_cast<Owned<Struct>*>(PyCapsule_GetContext(capsule));
}

template <typename Struct>
PyObject* CapsuleOf(std::unique_ptr<Owned<Struct>> made, const char* name) {
    PyObject* const capsule = PyCapsule_New(&made->held, name, nullptr);
    if (capsule == nullptr) return nullptr;
    PyCapsule_SetContext(capsule, made.release());
    PyCapsule_SetDestructor(capsule, DeleteUntaken<Struct>);
    return capsule;
}

/// As a stream. The schema that a consumer asks for is a wish that is not heard.
PyObject* ShowStream(PyObject* self, PyObject*) {
    return Guarded([&]() -> PyObject* {
        const Chunks& chunks = ChunksOf(self);
        auto stream = std::make_unique<Owned<ArrowArrayStream>>();
        auto shown = std::make_unique<ShownStream>(ShownStream{chunks.schema, chunks.arrays});
        stream->held.get_schema = ShownStream::GetSchema;
        stream->held.get_next = ShownStream::GetNext;
        stream->held.get_last_error = ShownStream::GetLastError;
        stream->held.release = ShownStream::Release;
        stream->held.private_data = shown.release();
        return MakeCapsule(std::move(stream));
    });
}

/// As a single array: what a single array was scored to.
PyObject* ShowArray(PyObject* self, PyObject*) {
    return Guarded([&]() -> PyObject* {
        const Chunks& chunks = ChunksOf(self);
        if (chunks.arrays.size() != 1) {
            PyErr_SetString(PyExc_ValueError, "The scores are several arrays: take them as a stream.");
            return nullptr;
        }
        auto schema = std::make_unique<Owned<ArrowSchema>>();
        Show(chunks.schema->held, chunks.schema, schema->held);
        auto array = std::make_unique<Owned<ArrowArray>>();
        Show(chunks.arrays.front()->held, chunks.arrays.front(), array->held);
        const Ref first(CapsuleOf(std::move(schema), "arrow_schema"));
        const Ref second(first ? CapsuleOf(std::move(array), "arrow_array") : nullptr);
        return second ? PyTuple_Pack(2, first.Get(), second.Get()) : nullptr;
    });
}

bool HasValue(const ArrowArray& array, std::int64_t entry) {
    const auto* const bits = static_cast<const std::uint8_t*>(array.buffers[0]);
    return array.null_count == 0 || bits == nullptr || ((bits[entry / 8] >> (entry % 8)) & 1U) != 0;
}

/// A column's texts as a list, None where there is none.
PyObject* ListTexts(const Chunks& chunks, std::size_t column, Py_ssize_t count) {
    Ref list(PyList_New(count));
    Py_ssize_t next = 0;
    for (const Array& array : chunks.arrays) {
        const ArrowArray& texts = *array->held.children[column];
        const auto* const ends = static_cast<const std::int32_t*>(texts.buffers[1]);
        const auto* const bytes = static_cast<const char*>(texts.buffers[2]);
        for (std::int64_t i = 0; list && i < texts.length; ++i, ++next) {
            PyObject* const text = HasValue(texts, i)
                                       ? PyUnicode_DecodeUTF8(bytes + ends[i], ends[i + 1] - ends[i], "replace")
                                       : Py_NewRef(Py_None);
            if (text == nullptr || PyList_SetItem(list.Get(), next, text) != 0) return nullptr;
        }
    }
    return list.Release();
}

/// A column's numbers as the bytes of doubles, NaN where there is none.
PyObject* JoinNumbers(const Chunks& chunks, std::size_t column, Py_ssize_t count) {
    Ref bytes(PyByteArray_FromStringAndSize(nullptr, count * static_cast<Py_ssize_t>(sizeof(double))));
    if (!bytes) return nullptr;
    char* next = PyByteArray_AsString(bytes.Get());
    for (const Array& array : chunks.arrays) {
        const ArrowArray& numbers = *array->held.children[column];
        const auto* const values = static_cast<const double*>(numbers.buffers[1]);
        for (std::int64_t i = 0; i < numbers.length; ++i, next += sizeof(double)) {
            const double number = HasValue(numbers, i) ? values[i] : std::numeric_limits<double>::quiet_NaN();
            std::memcpy(next, &number, sizeof number);
        }
    }
    return bytes.Release();
}

/// A column's numbers as a list, None where there is none.
PyObject* ListNumbers(const Chunks& chunks, std::size_t column, Py_ssize_t count) {
    Ref list(PyList_New(count));
    Py_ssize_t next = 0;
    for (const Array& array : chunks.arrays) {
        const ArrowArray& numbers = *array->held.children[column];
        const auto* const values = static_cast<const double*>(numbers.buffers[1]);
        for (std::int64_t i = 0; list && i < numbers.length; ++i, ++next) {
            PyObject* const number = HasValue(numbers, i) ? PyFloat_FromDouble(values[i]) : Py_NewRef(Py_None);
            if (number == nullptr || PyList_SetItem(list.Get(), next, number) != 0) return nullptr;
        }
    }
    return list.Release();
}

/// @param readNumbers how numbers are wanted; texts are a list.
PyObject* ReadColumn(PyObject* self, PyObject* position, decltype(&ListNumbers) readNumbers) {
    return Guarded([&]() -> PyObject* {
        const Chunks& chunks = ChunksOf(self);
        const ArrowSchema& schema = chunks.schema->held;
        const Py_ssize_t column = PyLong_AsSsize_t(position);
        if (column < 0 || column >= static_cast<Py_ssize_t>(schema.n_children)) {
            if (PyErr_Occurred() == nullptr) PyErr_SetString(PyExc_IndexError, "There is no such column.");
            return nullptr;
        }
        const auto number = static_cast<std::size_t>(column);
        const bool isText = std::strcmp(schema.children[number]->format, "u") == 0;
        return (isText ? ListTexts : readNumbers)(chunks, number, CountScores(self));
    });
}

PyObject* GetColumn(PyObject* self, PyObject* position) {
    return ReadColumn(self, position, JoinNumbers);
}

PyObject* GetList(PyObject* self, PyObject* position) {
    return ReadColumn(self, position, ListNumbers);
}

PyMethodDef methods[] = {
    {"stream", ShowStream, METH_NOARGS, PyDoc_STR("stream() -> a capsule with a stream of the arrays")},
    {"array", ShowArray, METH_NOARGS, PyDoc_STR("array() -> capsules with the schema and the only array")},
    {"column", GetColumn, METH_O, PyDoc_STR("column(i) -> a list of texts, or the bytes of doubles")},
    {"list", GetList, METH_O, PyDoc_STR("list(i) -> a list of texts or numbers")},
    {nullptr, nullptr, 0, nullptr}};
PyType_Slot slots[] = {{Py_tp_dealloc, reinterpret_cast<void*>(DeleteScores)},
                       {Py_sq_length, reinterpret_cast<void*>(CountScores)},
                       {Py_tp_methods, methods},
                       {0, nullptr}};
PyType_Spec spec = {"nbscore._engine.Scores", sizeof(ScoresObject), 0,
                    Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION, slots};

}  // namespace

PyObject* MakeScores(Schema schema, std::vector<Array> arrays) {
    auto chunks = std::make_unique<Chunks>(Chunks{std::move(schema), std::move(arrays)});
    auto* const object = PyObject_New(ScoresObject, reinterpret_cast<PyTypeObject*>(scoresType));
    if (object == nullptr) return nullptr;
    object->chunks = chunks.release();
    return reinterpret_cast<PyObject*>(object);
}

PyObject* MakeCapsule(std::unique_ptr<Owned<ArrowArrayStream>> stream) {
    return CapsuleOf(std::move(stream), "arrow_array_stream");
}

bool AddScoresType(PyObject* module) {
    scoresType = AddType(module, spec, "Scores");
    return scoresType != nullptr;
}

}  // namespace nbscore::python
