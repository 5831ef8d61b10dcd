#pragma once

#include "Engine.h"

/// @file
/// What objects of Python's are to columns.

namespace nbscore::python {

/// Up to which doubles tell all whole numbers apart.
inline constexpr long long mostWhole = 1LL << 53;

/// What an object is to a column.
struct Value {
    enum Kind { Missing, Number, Truth, Text, Fault };

    Kind kind = Fault;
    double number = 0.0;
    const char* text = nullptr;
    Py_ssize_t size = 0;
};

/// Reads the values of a column.
class ObjectReader {
public:
    explicit ObjectReader(PyObject* columnName) : name(columnName) {}

    /// A Fault with an error set for what is no value.
    Value Read(PyObject* object, Py_ssize_t row) const {
        if (PyUnicode_Check(object)) return ReadText(object, row);
        if (PyFloat_Check(object)) return NumberOf(PyFloat_AsDouble(object));
        if (object == Py_None) return {Value::Missing};
        if (PyBool_Check(object)) return {Value::Truth, object == Py_True ? 1.0 : 0.0};
        if (PyLong_Check(object)) return ReadWhole(object, row);
        return ReadOther(object, row);
    }

    Value Refuse(Py_ssize_t row, const char* problem) const {
        RaiseCaseError(name, row, problem);
        return {};
    }

private:
    static Value NumberOf(double number) {
        return number != number ? Value{Value::Missing} : Value{Value::Number, number};
    }

    Value ReadText(PyObject* object, Py_ssize_t row) const {
        Value value{Value::Text};
        value.text = PyUnicode_AsUTF8AndSize(object, &value.size);
        if (value.text != nullptr) return value;
        PyErr_Clear();
        return Refuse(row, "holds a text that cannot be written in UTF-8");
    }

    Value ReadWhole(PyObject* object, Py_ssize_t row) const {
        int overflow = 0;
        const long long whole = PyLong_AsLongLongAndOverflow(object, &overflow);
        if (overflow != 0 || whole > mostWhole || whole < -mostWhole)
            return Refuse(row, "holds a whole number beyond the 53 bits up to which doubles tell all of them apart");
        return {Value::Number, static_cast<double>(whole)};
    }

    /// Numbers of other libraries, and what stands for nothing there.
    Value ReadOther(PyObject* object, Py_ssize_t row) const {
        const Ref typeName(PyType_GetName(Py_TYPE(object)));
        // Of pandas, which is not to be imported for it.
        if (typeName && PyUnicode_CompareWithASCIIString(typeName.Get(), "NAType") == 0) return {Value::Missing};
        // A NaN, or no time (NaT), of whatever type.
        if (const Ref differs(PyObject_RichCompare(object, object, Py_NE));
            differs && PyObject_IsTrue(differs.Get()) == 1)
            return {Value::Missing};
        PyErr_Clear();
        if (typeName && PyUnicode_CompareWithASCIIString(typeName.Get(), "bool_") == 0)
            return {Value::Truth, PyObject_IsTrue(object) == 1 ? 1.0 : 0.0};
        if (PyIndex_Check(object)) {
            const Ref whole(PyNumber_Index(object));
            if (whole) return ReadWhole(whole.Get(), row);
        } else if (PyObject_HasAttrString(object, "__float__")) {
            const Ref number(PyNumber_Float(object));
            if (number) return NumberOf(PyFloat_AsDouble(number.Get()));
        }
        PyErr_Clear();
        return Refuse(row, "holds something that is neither a number, a text nor a truth value");
    }

    PyObject* name;
};

}  // namespace nbscore::python
