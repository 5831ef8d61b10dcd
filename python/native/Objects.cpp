// Columns of Python objects, and numbers among which a NaN stands for nothing.

#include <algorithm>
#include <cstring>
#include <string>
#include <type_traits>

#include "Values.h"

namespace nbscore::python {
namespace {

/// Which code an object has got, by its address: columns mostly hold the same objects over and over.
class CodesOfObjects {
public:
    CodesOfObjects() : entries(256) {}

    /// Where the code of an object stands; a new one has none yet.
    std::int32_t& Find(PyObject* object) {
        if (2 * used >= entries.size()) Grow();
        Entry& entry = EntryOf(object);
        if (entry.object == nullptr) {
            entry.object = object;
            ++used;
        }
        return entry.code;
    }

    static constexpr std::int32_t none = -2;

private:
    struct Entry {
        PyObject* object = nullptr;
        std::int32_t code = none;
    };

    Entry& EntryOf(PyObject* object) {
        const std::size_t mask = entries.size() - 1;
        const auto address = reinterpret_cast<std::uintptr_t>(object);
        std::size_t place = static_cast<std::size_t>((address >> 4) * 0x9E3779B97F4A7C15U >> 20) & mask;
        while (entries[place].object != nullptr && entries[place].object != object)
            place = (place + 1) & mask;
        return entries[place];
    }

    void Grow() {
        std::vector<Entry> old(entries.size() * 4);
        old.swap(entries);
        for (const Entry& entry : old) {
            if (entry.object != nullptr) EntryOf(entry.object) = entry;
        }
    }

    std::vector<Entry> entries;
    std::size_t used = 0;
};

Ref BytesOf(const void* content, std::size_t size) {
    return Ref(PyBytes_FromStringAndSize(static_cast<const char*>(content), static_cast<Py_ssize_t>(size)));
}

/// Texts, and numbers by their digits, as codes of a dictionary.
PyObject* EncodeTexts(const ObjectReader& reader, PyObject* const* objects, Py_ssize_t count) {
    Ref codes(PyBytes_FromStringAndSize(nullptr, count * static_cast<Py_ssize_t>(sizeof(std::int32_t))));
    if (!codes) return nullptr;
    auto* const written = reinterpret_cast<std::int32_t*>(PyBytes_AsString(codes.Get()));
    CodesOfObjects known;
    std::string bytes;
    std::vector<std::int64_t> offsets = {0};
    for (Py_ssize_t row = 0; row < count; ++row) {
        // A null stands for None there.
        PyObject* const object = objects[row] == nullptr ? Py_None : objects[row];
        std::int32_t& code = known.Find(object);
        if (code == CodesOfObjects::none) {
            const Value value = reader.Read(object, row);
            if (value.kind == Value::Fault) return nullptr;
            if (value.kind == Value::Missing) {
                code = -1;
            } else {
                if (value.kind == Value::Text) {
                    bytes.append(value.text, static_cast<std::size_t>(value.size));
                } else if (value.kind == Value::Truth) {
                    bytes += value.number != 0.0 ? "true" : "false";
                } else {
                    // The shortest digits that read back as the same double, as the engine has them.
                    char* const digits = PyOS_double_to_string(value.number, 'r', 0, 0, nullptr);
                    if (digits == nullptr) return nullptr;
                    bytes += digits;
                    PyMem_Free(digits);
                }
                code = static_cast<std::int32_t>(offsets.size() - 1);
                offsets.push_back(static_cast<std::int64_t>(bytes.size()));
            }
        }
        written[row] = code;
    }
    const auto size = static_cast<Py_ssize_t>(offsets.size() - 1);
    const Ref ends = BytesOf(offsets.data(), offsets.size() * sizeof(std::int64_t));
    const Ref texts = BytesOf(bytes.data(), bytes.size());
    if (!ends || !texts) return nullptr;
    return Py_BuildValue("sn(OO)(sn(OOO)O)", "i", count, Py_None, codes.Get(), "U", size, Py_None, ends.Get(),
                         texts.Get(), Py_None);
}

/// Numbers; null without an error set where there is a text.
PyObject* EncodeNumbers(const ObjectReader& reader, PyObject* const* objects, Py_ssize_t count, bool takesTexts) {
    Ref numbers(PyBytes_FromStringAndSize(nullptr, count * static_cast<Py_ssize_t>(sizeof(double))));
    if (!numbers) return nullptr;
    char* const written = PyBytes_AsString(numbers.Get());
    std::vector<std::uint8_t> bits;
    for (Py_ssize_t row = 0; row < count; ++row) {
        PyObject* const object = objects[row] == nullptr ? Py_None : objects[row];
        const Value value = reader.Read(object, row);
        if (value.kind == Value::Fault) return nullptr;
        if (value.kind == Value::Text) {
            if (!takesTexts) reader.Refuse(row, "holds a text, and its field holds numbers");
            return nullptr;
        }
        if (value.kind == Value::Missing) {
            if (bits.empty()) bits.assign((static_cast<std::size_t>(count) + 7) / 8, 0xFF);
            bits[static_cast<std::size_t>(row) / 8] &= static_cast<std::uint8_t>(~(1U << (row % 8)));
        }
        std::memcpy(written + row * static_cast<Py_ssize_t>(sizeof(double)), &value.number, sizeof(double));
    }
    const Ref valid = bits.empty() ? Ref::Borrow(Py_None) : BytesOf(bits.data(), bits.size());
    if (!valid) return nullptr;
    return Py_BuildValue("sn(OO)O", "g", count, valid.Get(), numbers.Get(), Py_None);
}

/// A whole number as wide as a kind of numbers.
template <typename Number>
using MaskOf = std::conditional_t<sizeof(Number) == 4, std::uint32_t, std::uint64_t>;

template <typename Number>
bool HasNan(const Number* numbers, std::size_t count) {
    // Some side by side, and not stopped at: so it is done by vectors, as fast as memory is read.
    constexpr std::size_t sideBySide = 8;
    constexpr std::size_t atOnce = 512 * sideBySide;
    std::size_t first = 0;
    for (; first + atOnce <= count; first += atOnce) {
        MaskOf<Number> found[sideBySide] = {};
        for (std::size_t i = 0; i < atOnce; i += sideBySide) {
            for (std::size_t k = 0; k < sideBySide; ++k) {
                const Number number = numbers[first + i + k];
                found[k] |= number != number ? ~MaskOf<Number>{0} : MaskOf<Number>{0};
            }
        }
        for (const MaskOf<Number> some : found) {
            if (some != 0) return true;
        }
    }
    return std::any_of(numbers + first, numbers + count, [](Number number) { return number != number; });
}

template <typename Number>
std::vector<std::uint8_t> MarkNumbers(const Bytes& given) {
    const auto* const numbers = static_cast<const Number*>(given.Get());
    const std::size_t count = given.GetSize() / sizeof(Number);
    std::vector<std::uint8_t> bits;
    if (!HasNan(numbers, count)) return bits;
    bits.resize((count + 7) / 8);
    for (std::size_t i = 0; i < count; ++i)
        bits[i / 8] = static_cast<std::uint8_t>(bits[i / 8] | ((numbers[i] == numbers[i] ? 1U : 0U) << (i % 8)));
    return bits;
}

}  // namespace

PyObject* Encode(PyObject*, PyObject* arguments) {
    return Guarded([&]() -> PyObject* {
        PyObject* objects = nullptr;
        int isNumeric = 0;
        int takesTexts = 0;
        PyObject* name = nullptr;
        if (!PyArg_ParseTuple(arguments, "OppU", &objects, &isNumeric, &takesTexts, &name)) return nullptr;
        Bytes held;
        if (!held.Take(objects, PyBUF_C_CONTIGUOUS | PyBUF_FORMAT)) return nullptr;
        const ObjectReader reader(name);
        const auto* const all = static_cast<PyObject* const*>(held.Get());
        const auto count = static_cast<Py_ssize_t>(held.GetSize() / sizeof(PyObject*));
        if (isNumeric != 0) {
            PyObject* const encoded = EncodeNumbers(reader, all, count, takesTexts != 0);
            if (encoded != nullptr || PyErr_Occurred() != nullptr) return encoded;
        }
        return EncodeTexts(reader, all, count);
    });
}

PyObject* ValidBits(PyObject*, PyObject* arguments) {
    return Guarded([&]() -> PyObject* {
        PyObject* numbers = nullptr;
        const char* format = nullptr;
        if (!PyArg_ParseTuple(arguments, "Os", &numbers, &format)) return nullptr;
        Bytes held;
        if (!held.Take(numbers)) return nullptr;
        std::vector<std::uint8_t> bits;
        {
            const WithoutLock others;
            bits = *format == 'f' ? MarkNumbers<float>(held) : MarkNumbers<double>(held);
        }
        if (bits.empty()) return Py_NewRef(Py_None);
        return BytesOf(bits.data(), bits.size()).Release();
    });
}

}  // namespace nbscore::python
