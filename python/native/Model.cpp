// The type Model: a model of the library.

#include <string>

#include "Engine.h"

namespace nbscore::python {
namespace {

PyObject* modelType = nullptr;

struct ModelObject {
    PyObject_HEAD nbscore_model* model;
};

nbscore_model* Handle(PyObject* self) {
    return reinterpret_cast<ModelObject*>(self)->model;
}

/// How a document is read, from the arguments that follow it.
struct Reading {
    Bytes document;
    const char* name = nullptr;
    nbscore_reading options = NBSCORE_READING_INIT;

    /// Answers whether it did; else an error is set.
    bool Take(PyObject* arguments) {
        PyObject* given = nullptr;
        int rule = 0;
        int adapt = 0;
        int plain = 0;
        unsigned long long maxMemory = 0;
        unsigned long long maxBytes = 0;
        if (!PyArg_ParseTuple(arguments, "OsippKK", &given, &name, &rule, &adapt, &plain, &maxMemory, &maxBytes))
            return false;
        options.rule = rule;
        options.adapt = adapt;
        options.plain_densities = plain;
        options.max_memory = maxMemory;
        options.max_document_bytes = maxBytes;
        return document.Take(given);
    }
};

/// Runs a call of the library without the lock. Answers whether it went well; else an error is set.
template <typename Call>
bool Run(const Call& call) {
    nbscore_error* error = nullptr;
    const std::int32_t kind = [&] {
        const WithoutLock others;
        return call(&error);
    }();
    if (kind == NBSCORE_OK) return true;
    Raise(error);
    return false;
}

/// The text that a call gives.
template <typename Call>
PyObject* TextOf(const Call& call) {
    char* text = nullptr;
    if (!Run([&](nbscore_error** error) { return call(&text, error); })) return nullptr;
    PyObject* const made =
        PyUnicode_DecodeUTF8(text, static_cast<Py_ssize_t>(std::char_traits<char>::length(text)), "replace");
    nbscore_text_free(text);
    return made;
}

PyObject* MakeModel(PyTypeObject*, PyObject* arguments, PyObject*) {
    Reading reading;
    if (!reading.Take(arguments)) return nullptr;
    nbscore_model* model = nullptr;
    if (!Run([&](nbscore_error** error) {
            return nbscore_open_memory(reading.document.Get(), reading.document.GetSize(), reading.name,
                                       &reading.options, &model, error);
        }))
        return nullptr;
    auto* const object = PyObject_New(ModelObject, reinterpret_cast<PyTypeObject*>(modelType));
    if (object == nullptr) {
        nbscore_close(model);
        return nullptr;
    }
    object->model = model;
    return reinterpret_cast<PyObject*>(object);
}

void DeleteModel(PyObject* self) {
    PyTypeObject* const type = Py_TYPE(self);
    nbscore_close(Handle(self));
    PyObject_Free(self);
    Py_DECREF(type);
}

PyObject* Describe(PyObject* self, PyObject*) {
    return TextOf([&](char** text, nbscore_error** error) { return nbscore_describe(Handle(self), text, error); });
}

PyObject* Content(PyObject* self, PyObject*) {
    return TextOf([&](char** text, nbscore_error** error) { return nbscore_content(Handle(self), text, error); });
}

PyObject* Display(PyObject* self, PyObject*) {
    return TextOf([&](char** text, nbscore_error** error) { return nbscore_display(Handle(self), text, error); });
}

template <auto report>
PyObject* Report(PyObject*, PyObject* arguments) {
    Reading reading;
    if (!reading.Take(arguments)) return nullptr;
    return TextOf([&](char** text, nbscore_error** error) {
        return report(reading.document.Get(), reading.document.GetSize(), reading.name, &reading.options, text, error);
    });
}

/// `(usual_columns, prediction_only, allow_missing_fields, best)`
bool TakeScoring(PyObject* given, nbscore_scoring& scoring) {
    int usual = 0;
    int predictionOnly = 0;
    int allowsMissing = 0;
    unsigned long long best = 0;
    if (!PyArg_ParseTuple(given, "pppK", &usual, &predictionOnly, &allowsMissing, &best)) return false;
    scoring.usual_columns = usual;
    scoring.prediction_only = predictionOnly;
    scoring.lacking_as_absent = allowsMissing;
    scoring.best = best;
    return true;
}

PyObject* Columns(PyObject* self, PyObject* options) {
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
    if (!TakeScoring(options, scoring)) return nullptr;
    Owned<ArrowSchema> schema;
    if (!Run([&](nbscore_error** error) { return nbscore_score_schema(Handle(self), &scoring, &schema.held, error); }))
        return nullptr;
    Ref list(PyList_New(0));
    for (std::int64_t i = 0; list && i < schema.held.n_children; ++i) {
        const ArrowSchema& column = *schema.held.children[i];
        const Ref pair(Py_BuildValue("sO", column.name, column.format[0] == 'u' ? Py_True : Py_False));
        if (!pair || PyList_Append(list.Get(), pair.Get()) != 0) return nullptr;
    }
    return list.Release();
}

PyObject* Score(PyObject* self, PyObject* arguments) {
    return Guarded([&]() -> PyObject* {
        PyObject* cases = nullptr;
        PyObject* options = nullptr;
        if (!PyArg_ParseTuple(arguments, "OO!", &cases, &PyTuple_Type, &options)) return nullptr;
        nbscore_scoring scoring = NBSCORE_SCORING_INIT;
        if (!TakeScoring(options, scoring)) return nullptr;
        auto schema = std::make_shared<Owned<ArrowSchema>>();
        if (!Run([&](nbscore_error** error) {
                return nbscore_score_schema(Handle(self), &scoring, &schema->held, error);
            }))
            return nullptr;
        std::vector<std::shared_ptr<Owned<ArrowArray>>> arrays;
        const Ref all(PyObject_GetIter(cases));
        if (!all) return nullptr;
        while (const Ref some = Ref(PyIter_Next(all.Get()))) {
            const CaseArray* const table = CasesOf(some.Get());
            if (table == nullptr) return nullptr;
            auto scores = std::make_shared<Owned<ArrowArray>>();
            if (!Run([&](nbscore_error** error) {
                    return nbscore_score(Handle(self), &scoring, &table->GetSchema(), &table->GetArray(), &scores->held,
                                         error);
                }))
                return nullptr;
            arrays.push_back(std::move(scores));
        }
        if (PyErr_Occurred() != nullptr) return nullptr;
        return MakeScores(std::move(schema), std::move(arrays));
    });
}

/// Memory for answers, or none for None. Answers whether it is large enough; else an error is set.
bool TakeRoom(PyObject* given, std::size_t needed, Bytes& room) {
    if (given == Py_None) return true;
    if (!room.Take(given, PyBUF_WRITABLE)) return false;
    if (room.GetSize() == needed) return true;
    PyErr_SetString(PyExc_ValueError, "The room for answers has another size.");
    return false;
}

PyObject* Answer(PyObject* self, PyObject* arguments) {
    PyObject* cases = nullptr;
    PyObject* given[3] = {};
    int allowsMissing = 0;
    int byColumns = 0;
    Py_ssize_t columns = 0;
    if (!PyArg_ParseTuple(arguments, "OpOOOnp", &cases, &allowsMissing, &given[0], &given[1], &given[2], &columns,
                          &byColumns))
        return nullptr;
    const CaseArray* const table = CasesOf(cases);
    if (table == nullptr) return nullptr;
    const auto size = static_cast<std::size_t>(table->GetArray().length);
    Bytes predicted;
    Bytes confidence;
    Bytes probabilities;
    if (!TakeRoom(given[0], size * sizeof(std::int32_t), predicted)) return nullptr;
    if (!TakeRoom(given[1], size * sizeof(double), confidence)) return nullptr;
    if (!TakeRoom(given[2], size * static_cast<std::size_t>(columns) * sizeof(double), probabilities)) return nullptr;
    nbscore_scoring scoring = NBSCORE_SCORING_INIT;
    scoring.lacking_as_absent = allowsMissing;
    nbscore_room answers = NBSCORE_ROOM_INIT;
    answers.predicted = static_cast<std::int32_t*>(predicted.GetWritable());
    answers.confidence = static_cast<double*>(confidence.GetWritable());
    answers.probabilities = static_cast<double*>(probabilities.GetWritable());
    answers.columns = static_cast<std::uint64_t>(columns);
    answers.by_columns = byColumns;
    if (!Run([&](nbscore_error** error) {
            return nbscore_score_into(Handle(self), &scoring, &table->GetSchema(), &table->GetArray(), &answers, error);
        }))
        return nullptr;
    return Py_NewRef(Py_None);
}

/// Scores of a stream of cases, each array when it is asked for.
PyObject* Stream(PyObject* self, PyObject* arguments) {
    return Guarded([&]() -> PyObject* {
        PyObject* capsule = nullptr;
        PyObject* options = nullptr;
        if (!PyArg_ParseTuple(arguments, "OO!", &capsule, &PyTuple_Type, &options)) return nullptr;
        nbscore_scoring scoring = NBSCORE_SCORING_INIT;
        if (!TakeScoring(options, scoring)) return nullptr;
        auto* const cases = static_cast<ArrowArrayStream*>(PyCapsule_GetPointer(capsule, "arrow_array_stream"));
        if (cases == nullptr) return nullptr;
        auto scores = std::make_unique<Owned<ArrowArrayStream>>();
        if (!Run([&](nbscore_error** error) {
                return nbscore_score_stream(Handle(self), &scoring, cases, &scores->held, error);
            }))
            return nullptr;
        return MakeCapsule(std::move(scores));
    });
}

PyMethodDef methods[] = {
    {"describe", Describe, METH_NOARGS, PyDoc_STR("describe() -> JSON, as `nbscore check` writes it")},
    {"content", Content, METH_NOARGS, PyDoc_STR("content() -> JSON: fields, classes, sub-models")},
    {"display", Display, METH_NOARGS, PyDoc_STR("display() -> the model as text for people")},
    {"columns", Columns, METH_O, PyDoc_STR("columns(options) -> [(name, is it text), ...]")},
    {"score", Score, METH_VARARGS, PyDoc_STR("score(iterable of Cases, options) -> Scores")},
    {"answer", Answer, METH_VARARGS,
     PyDoc_STR("answer(cases, allow_missing_fields, predicted, confidence, probabilities, columns, by_columns)")},
    {"stream", Stream, METH_VARARGS, PyDoc_STR("stream(capsule, options) -> a capsule with a stream of scores")},
    {"check", Report<nbscore_check_memory>, METH_VARARGS | METH_STATIC, PyDoc_STR("check(document, ...) -> JSON")},
    {"verify", Report<nbscore_verify_memory>, METH_VARARGS | METH_STATIC, PyDoc_STR("verify(document, ...) -> JSON")},
    {nullptr, nullptr, 0, nullptr}};
PyType_Slot slots[] = {{Py_tp_new, reinterpret_cast<void*>(MakeModel)},
                       {Py_tp_dealloc, reinterpret_cast<void*>(DeleteModel)},
                       {Py_tp_methods, methods},
                       {Py_tp_doc, const_cast<char*>("Model(document, name, rule, adapt, plain_densities, max_memory, "
                                                     "max_document_bytes)")},
                       {0, nullptr}};
PyType_Spec spec = {"nbscore._engine.Model", sizeof(ModelObject), 0, Py_TPFLAGS_DEFAULT, slots};

}  // namespace

nbscore_model* ModelOf(PyObject* object) {
    if (PyObject_TypeCheck(object, reinterpret_cast<PyTypeObject*>(modelType))) return Handle(object);
    PyErr_SetString(PyExc_TypeError, "A model is needed.");
    return nullptr;
}

bool AddModelType(PyObject* module) {
    modelType = AddType(module, spec, "Model");
    return modelType != nullptr;
}

}  // namespace nbscore::python
