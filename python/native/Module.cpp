// The module nbscore._engine, and what is common to its types.

#include <exception>
#include <new>

#include "Engine.h"

namespace nbscore::python {
namespace {

/// A class of nbscore._errors.
Ref ErrorClass(const char* name) {
    const Ref module(PyImport_ImportModule("nbscore._errors"));
    return module ? Ref(PyObject_GetAttrString(module.Get(), name)) : Ref();
}

PyObject* RaiseMade(const Ref& type, const Ref& made) {
    if (type && made) PyErr_SetObject(type.Get(), made.Get());
    return nullptr;
}

PyObject* RaiseRefused(const nbscore_error& error) {
    const Ref type = ErrorClass("DocumentError");
    if (!type) return nullptr;
    return RaiseMade(type,
                     Ref(PyObject_CallFunction(type.Get(), "siskkss", error.message, error.code, error.file,
                                               static_cast<unsigned long>(error.line),
                                               static_cast<unsigned long>(error.column), error.path, error.advice)));
}

PyObject* RaiseBadCases(const nbscore_error& error) {
    const Ref type = ErrorClass("CaseError");
    if (!type) return nullptr;
    return RaiseMade(type, Ref(PyObject_CallMethod(type.Get(), "_of_message", "s", error.message)));
}

PyMethodDef functions[] = {
    {"encode", Encode, METH_VARARGS,
     PyDoc_STR("encode(objects, numeric, takes_texts, name) -> (format, length, buffers, dictionary)")},
    {"valid_bits", ValidBits, METH_VARARGS,
     PyDoc_STR("valid_bits(numbers, format) -> the bits that mark what is no NaN; None where all is")},
    {nullptr, nullptr, 0, nullptr}};

PyModuleDef definition = {PyModuleDef_HEAD_INIT,
                          "nbscore._engine",
                          PyDoc_STR("The engine behind the package."),
                          -1,
                          functions,
                          nullptr,
                          nullptr,
                          nullptr,
                          nullptr};

}  // namespace

PyObject* Raise(nbscore_error* error) {
    switch (error->kind) {
        case NBSCORE_REFUSED:
            RaiseRefused(*error);
            break;
        case NBSCORE_BAD_CASES:
            RaiseBadCases(*error);
            break;
        case NBSCORE_UNREADABLE:
            PyErr_SetString(PyExc_OSError, error->message);
            break;
        case NBSCORE_BAD_ARGUMENT:
            PyErr_SetString(PyExc_ValueError, error->message);
            break;
        case NBSCORE_OUT_OF_MEMORY:
            PyErr_NoMemory();
            break;
        default:
            PyErr_SetString(PyExc_RuntimeError, error->message);
    }
    nbscore_error_free(error);
    return nullptr;
}

PyObject* RaiseCaseError(PyObject* column, Py_ssize_t row, const char* problem) {
    const Ref type = ErrorClass("CaseError");
    if (!type) return nullptr;
    return RaiseMade(type, Ref(PyObject_CallMethod(type.Get(), "_of_value", "Ons", column, row, problem)));
}

PyObject* RaiseOfException() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return PyErr_NoMemory();
    } catch (const std::exception& error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    } catch (...) {
        PyErr_SetString(PyExc_RuntimeError, "The engine failed for a reason unknown.");
    }
    return nullptr;
}

PyObject* AddType(PyObject* module, PyType_Spec& spec, const char* name) {
    PyObject* const type = PyType_FromSpec(&spec);
    // The module keeps it as long as the process lives.
    if (type == nullptr || PyModule_AddObjectRef(module, name, type) != 0) return nullptr;
    return type;
}

}  // namespace nbscore::python

PyMODINIT_FUNC PyInit__engine() {
    using namespace nbscore::python;
    if (nbscore_abi() != NBSCORE_ABI) {
        PyErr_SetString(PyExc_ImportError, "The library is of another version than the package.");
        return nullptr;
    }
    Ref module(PyModule_Create(&definition));
    if (!module || PyModule_AddStringConstant(module.Get(), "version", nbscore_version()) != 0) return nullptr;
    if (!AddModelType(module.Get()) || !AddCaseTypes(module.Get()) || !AddScoresType(module.Get()) ||
        !AddRowType(module.Get()))
        return nullptr;
    return module.Release();
}
