#pragma once

// The part of Python's interface that stays the same from one version to the next: a build serves all from 3.11 on.
#define Py_LIMITED_API 0x030B0000
#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "nbscore.h"

/// @file
/// What the files of the module have in common. Everything here needs the interpreter's lock, unless it says otherwise.

namespace nbscore::python {

/// An object of Python's that this owns.
class Ref {
public:
    Ref() = default;
    /// Takes over what is owned already; null for an error that is set.
    explicit Ref(PyObject* owned) : object(owned) {}
    Ref(Ref&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    Ref& operator=(Ref&& other) noexcept {
        std::swap(object, other.object);
        return *this;
    }
    ~Ref() { Py_XDECREF(object); }

    static Ref Borrow(PyObject* borrowed) { return Ref(Py_XNewRef(borrowed)); }

    PyObject* Get() const { return object; }
    PyObject* Release() { return std::exchange(object, nullptr); }
    explicit operator bool() const { return object != nullptr; }

private:
    PyObject* object = nullptr;
};

/// Bytes of another object, held as long as this lives.
class Bytes {
public:
    Bytes() = default;
    Bytes(const Bytes&) = delete;
    Bytes& operator=(const Bytes&) = delete;
    ~Bytes() {
        if (view.obj != nullptr) PyBuffer_Release(&view);
    }

    /// Whether it was taken; else an error is set.
    bool Take(PyObject* object, int flags = PyBUF_SIMPLE) { return PyObject_GetBuffer(object, &view, flags) == 0; }
    const void* Get() const { return view.buf; }
    void* GetWritable() const { return view.buf; }
    std::size_t GetSize() const { return static_cast<std::size_t>(view.len); }

private:
    Py_buffer view = {};
};

/// The interpreter is free for other threads as long as this lives.
class WithoutLock {
public:
    WithoutLock() : state(PyEval_SaveThread()) {}
    WithoutLock(const WithoutLock&) = delete;
    WithoutLock& operator=(const WithoutLock&) = delete;
    ~WithoutLock() { PyEval_RestoreThread(state); }

private:
    PyThreadState* state;
};

/// An error that is set stays so as long as this lives, whatever code of other libraries runs.
class KeptError {
public:
    KeptError() { PyErr_Fetch(&type, &value, &trace); }
    KeptError(const KeptError&) = delete;
    KeptError& operator=(const KeptError&) = delete;
    ~KeptError() { PyErr_Restore(type, value, trace); }

private:
    PyObject* type = nullptr;
    PyObject* value = nullptr;
    PyObject* trace = nullptr;
};

/// A struct of the Arrow C interfaces, released when this goes.
template <typename Struct>
struct Owned {
    Owned() = default;
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (held.release != nullptr) held.release(&held);
    }

    Struct held = {};
};

/// Raises what an error of the library is in Python, and frees it. Answers null.
PyObject* Raise(nbscore_error* error);
/// Raises a CaseError that names the column and, from 0, the row; -1 for none.
PyObject* RaiseCaseError(PyObject* column, Py_ssize_t row, const char* problem);
/// Raises MemoryError for std::bad_alloc and RuntimeError for any other exception that is being handled.
PyObject* RaiseOfException();

/// Runs a function whose C++ exceptions become Python's.
template <typename Function>
PyObject* Guarded(const Function& function) {
    try {
        return function();
    } catch (...) {
        return RaiseOfException();
    }
}

/// The handle of an object of the type Model; null with an error set for any other.
nbscore_model* ModelOf(PyObject* object);

/// Cases as the library takes them: one struct array with its schema, and what they lie in.
struct CaseArray {
    virtual ~CaseArray() = default;
    virtual const ArrowSchema& GetSchema() const = 0;
    virtual const ArrowArray& GetArray() const = 0;
};
/// Of an object of the type Cases; null with an error set for any other.
const CaseArray* CasesOf(PyObject* object);

/// What a column of objects becomes: `encode` of the module.
PyObject* Encode(PyObject* module, PyObject* arguments);
/// `valid_bits` of the module.
PyObject* ValidBits(PyObject* module, PyObject* arguments);

/// An object of the type Scores.
PyObject* MakeScores(std::shared_ptr<Owned<ArrowSchema>> schema,
                     std::vector<std::shared_ptr<Owned<ArrowArray>>> arrays);
/// A capsule with a struct that is released when nobody takes it.
PyObject* MakeCapsule(std::unique_ptr<Owned<ArrowArrayStream>> stream);

/// Add the types to the module. Answer whether they did; else an error is set.
bool AddModelType(PyObject* module);
bool AddCaseTypes(PyObject* module);
bool AddScoresType(PyObject* module);
bool AddRowType(PyObject* module);
/// A type, added under its name; borrowed, or null.
PyObject* AddType(PyObject* module, PyType_Spec& spec, const char* name);

}  // namespace nbscore::python
