#pragma once

#include <cstddef>
#include <memory>
#include <new>

namespace nbscore {

/// A fixed number of doubles that begin where the widest vectors may be loaded.
class AlignedNumbers {
public:
    static constexpr std::size_t alignment = 64;

    AlignedNumbers() = default;
    AlignedNumbers(std::size_t count, double value)
        : size(count),
          numbers(static_cast<double*>(::operator new(count * sizeof(double), std::align_val_t(alignment)))) {
        std::uninitialized_fill_n(numbers.get(), count, value);
    }

    double* Get() { return numbers.get(); }
    const double* Get() const { return numbers.get(); }
    std::size_t GetSize() const { return size; }

private:
    struct Free {
        void operator()(double* pointer) const { ::operator delete(pointer, std::align_val_t(alignment)); }
    };

    std::size_t size = 0;
    std::unique_ptr<double, Free> numbers;
};

}  // namespace nbscore
