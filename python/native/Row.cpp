// The type Row: one case, scored again and again. The lock is kept all the while: a case takes less time than giving it
// away.

#include <string>

#include "Values.h"

namespace nbscore::python {
namespace {

PyObject* rowType = nullptr;

struct Field {
    Ref name;
    std::size_t position = 0;
    bool isNumeric = false;
    bool isNeeded = false;
};

struct RowParts {
    ~RowParts() { nbscore_row_free(row); }

    nbscore_row* row = nullptr;
    std::vector<Field> fields;
    /// The names of what is answered.
    Ref columns;
    std::vector<PyObject*> columnNames;
    /// What stands for each category that can be predicted; none of a set.
    Ref classes;
};

struct RowObject {
    PyObject_HEAD RowParts* parts;
};

const RowParts& PartsOf(PyObject* self) {
    return *reinterpret_cast<RowObject*>(self)->parts;
}

void DeleteRow(PyObject* self) {
    PyTypeObject* const type = Py_TYPE(self);
    delete reinterpret_cast<RowObject*>(self)->parts;
    PyObject_Free(self);
    Py_DECREF(type);
}

bool AddFields(nbscore_model* model, PyObject* given, RowParts& parts) {
    for (Py_ssize_t i = 0; i < PyList_Size(given); ++i) {
        PyObject* name = nullptr;
        int isNumeric = 0;
        int isNeeded = 0;
        if (!PyArg_ParseTuple(PyList_GetItem(given, i), "Upp", &name, &isNumeric, &isNeeded)) return false;
        Py_ssize_t size = 0;
        const char* const text = PyUnicode_AsUTF8AndSize(name, &size);
        if (text == nullptr) return false;
        Field& field = parts.fields.emplace_back();
        field.name = Ref::Borrow(name);
        field.isNumeric = isNumeric != 0;
        field.isNeeded = isNeeded != 0;
        nbscore_error* error = nullptr;
        if (nbscore_find_field(model, text, &field.position, &error) != NBSCORE_OK) {
            Raise(error);
            return false;
        }
    }
    return PyErr_Occurred() == nullptr;
}

PyObject* MakeRow(PyTypeObject*, PyObject* arguments, PyObject*) {
    return Guarded([&]() -> PyObject* {
        PyObject* of = nullptr;
        PyObject* fields = nullptr;
        PyObject* columns = nullptr;
        PyObject* classes = nullptr;
        if (!PyArg_ParseTuple(arguments, "OO!O!O", &of, &PyList_Type, &fields, &PyList_Type, &columns, &classes))
            return nullptr;
        nbscore_model* const model = ModelOf(of);
        if (model == nullptr) return nullptr;
        auto parts = std::make_unique<RowParts>();
        nbscore_error* error = nullptr;
        if (nbscore_row_make(model, &parts->row, &error) != NBSCORE_OK) return Raise(error);
        if (!AddFields(model, fields, *parts)) return nullptr;
        parts->columns = Ref(PyList_AsTuple(columns));
        if (!parts->columns) return nullptr;
        for (Py_ssize_t i = 0; i < PyTuple_Size(parts->columns.Get()); ++i)
            parts->columnNames.push_back(PyTuple_GetItem(parts->columns.Get(), i));
        if (classes != Py_None) {
            parts->classes = Ref(PySequence_Tuple(classes));
            if (!parts->classes) return nullptr;
        }
        auto* const object = PyObject_New(RowObject, reinterpret_cast<PyTypeObject*>(rowType));
        if (object == nullptr) return nullptr;
        object->parts = parts.release();
        return reinterpret_cast<PyObject*>(object);
    });
}

/// The values of a case, on the stack where they are few.
class CaseValues {
public:
    explicit CaseValues(std::size_t count) {
        if (count > fewOnes) {
            many.resize(count);
            held.reserve(count);
        }
    }

    Value& operator[](std::size_t i) { return many.empty() ? few[i] : many[i]; }
    /// Keeps what a value was read from: reading another one may run any code.
    void Hold(PyObject* object) { held.push_back(Ref::Borrow(object)); }

private:
    static constexpr std::size_t fewOnes = 32;

    Value few[fewOnes];
    std::vector<Value> many;
    std::vector<Ref> held;
};

bool Set(const RowParts& parts, const Field& field, const Value& value) {
    nbscore_error* error = nullptr;
    std::int32_t kind = NBSCORE_OK;
    if (value.kind == Value::Text) {
        kind =
            nbscore_row_set_text(parts.row, field.position, value.text, static_cast<std::size_t>(value.size), &error);
    } else if (value.kind == Value::Missing) {
        kind = nbscore_row_set_missing(parts.row, field.position, &error);
    } else if (value.kind == Value::Truth && !field.isNumeric) {
        const bool isTrue = value.number != 0.0;
        kind = nbscore_row_set_text(parts.row, field.position, isTrue ? "true" : "false", isTrue ? 4 : 5, &error);
    } else {
        kind = nbscore_row_set_number(parts.row, field.position, value.number, &error);
    }
    if (kind == NBSCORE_OK) return true;
    Raise(error);
    return false;
}

/// Scores what was read. From here on, as long as the answer is used, nothing of Python's may run but the making of
/// plain values: a container would let the collector of garbage run, and with it code that sets the same row.
bool ScoreValues(const RowParts& parts, CaseValues& values, nbscore_answer& answer) {
    for (std::size_t i = 0; i < parts.fields.size(); ++i) {
        if (!Set(parts, parts.fields[i], values[i])) return false;
    }
    nbscore_error* error = nullptr;
    if (nbscore_row_score(parts.row, &answer, &error) == NBSCORE_OK) return true;
    Raise(error);
    return false;
}

PyObject* NumberOrNone(double number) {
    return number == NBSCORE_MISSING ? Py_NewRef(Py_None) : PyFloat_FromDouble(number);
}

/// The value of a column: a new reference, or null.
PyObject* ColumnOf(const RowParts& parts, const nbscore_answer& answer, std::size_t column) {
    std::size_t number = column;
    if (parts.classes) {
        if (column == 0) {
            return Py_NewRef(answer.predicted < 0 ? Py_None : PyTuple_GetItem(parts.classes.Get(), answer.predicted));
        }
        if (column == 1) return NumberOrNone(answer.confidence);
        number = column - 2;
    }
    return number < answer.count ? NumberOrNone(answer.numbers[number]) : Py_NewRef(Py_None);
}

PyObject* Score(PyObject* self, PyObject* const* given, Py_ssize_t count) {
    return Guarded([&]() -> PyObject* {
        const RowParts& parts = PartsOf(self);
        if (static_cast<std::size_t>(count) != parts.fields.size()) {
            return PyErr_Format(PyExc_TypeError, "score takes %zd values, one for each field, and was given %zd.",
                                static_cast<Py_ssize_t>(parts.fields.size()), count);
        }
        CaseValues values(parts.fields.size());
        for (std::size_t i = 0; i < parts.fields.size(); ++i) {
            values[i] = ObjectReader(parts.fields[i].name.Get()).Read(given[i], -1);
            if (values[i].kind == Value::Fault) return nullptr;
        }
        const Ref tuple(PyTuple_New(static_cast<Py_ssize_t>(parts.columnNames.size())));
        nbscore_answer answer = {};
        if (!tuple || !ScoreValues(parts, values, answer)) return nullptr;
        for (std::size_t i = 0; i < parts.columnNames.size(); ++i) {
            PyObject* const value = ColumnOf(parts, answer, i);
            if (value == nullptr || PyTuple_SetItem(tuple.Get(), static_cast<Py_ssize_t>(i), value) != 0)
                return nullptr;
        }
        return Py_NewRef(tuple.Get());
    });
}

bool ReadCase(const RowParts& parts, PyObject* given, bool allowsMissing, CaseValues& values) {
    for (std::size_t i = 0; i < parts.fields.size(); ++i) {
        const Field& field = parts.fields[i];
        PyObject* const value = PyDict_GetItemWithError(given, field.name.Get());
        if (value == nullptr) {
            if (PyErr_Occurred() != nullptr) return false;
            if (field.isNeeded && !allowsMissing) {
                RaiseCaseError(field.name.Get(), -1, "is missing, and the model needs it");
                return false;
            }
            values[i] = {Value::Missing};
            continue;
        }
        if (PyUnicode_Check(value)) values.Hold(value);
        values[i] = ObjectReader(field.name.Get()).Read(value, -1);
        if (values[i].kind == Value::Fault) return false;
    }
    return true;
}

PyObject* ScoreDict(PyObject* self, PyObject* const* given, Py_ssize_t count) {
    return Guarded([&]() -> PyObject* {
        const RowParts& parts = PartsOf(self);
        if (count != 2) return PyErr_Format(PyExc_TypeError, "score_dict takes 2 arguments.");
        Ref cells = Ref::Borrow(given[0]);
        if (!PyDict_Check(given[0])) {
            cells = Ref(PyDict_New());
            if (!cells || PyDict_Update(cells.Get(), given[0]) != 0) return nullptr;
        }
        CaseValues values(parts.fields.size());
        if (!ReadCase(parts, cells.Get(), PyObject_IsTrue(given[1]) == 1, values)) return nullptr;
        const Ref dict(PyDict_New());
        nbscore_answer answer = {};
        if (!dict || !ScoreValues(parts, values, answer)) return nullptr;
        for (std::size_t i = 0; i < parts.columnNames.size(); ++i) {
            const Ref value(ColumnOf(parts, answer, i));
            if (!value || PyDict_SetItem(dict.Get(), parts.columnNames[i], value.Get()) != 0) return nullptr;
        }
        return Py_NewRef(dict.Get());
    });
}

PyObject* GetColumns(PyObject* self, void*) {
    return Py_NewRef(PartsOf(self).columns.Get());
}

template <auto function>
PyCFunction AsMethod() {
    return reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function));
}

PyMethodDef methods[] = {
    {"score", AsMethod<Score>(), METH_FASTCALL,
     PyDoc_STR("score(*values) -> a tuple with a value for each of the columns, None where there is none")},
    {"score_dict", AsMethod<ScoreDict>(), METH_FASTCALL,
     PyDoc_STR("score_dict(case, allow_missing_fields) -> a dict with a value for each of the columns")},
    {nullptr, nullptr, 0, nullptr}};
PyGetSetDef members[] = {{"columns", GetColumns, nullptr, PyDoc_STR("The names of what score gives."), nullptr},
                         {nullptr, nullptr, nullptr, nullptr, nullptr}};
PyType_Slot slots[] = {{Py_tp_new, reinterpret_cast<void*>(MakeRow)},
                       {Py_tp_dealloc, reinterpret_cast<void*>(DeleteRow)},
                       {Py_tp_methods, methods},
                       {Py_tp_getset, members},
                       {0, nullptr}};
PyType_Spec spec = {"nbscore._engine.Row", sizeof(RowObject), 0, Py_TPFLAGS_DEFAULT, slots};

}  // namespace

bool AddRowType(PyObject* module) {
    rowType = AddType(module, spec, "Row");
    return rowType != nullptr;
}

}  // namespace nbscore::python
