#include "naivebayes/PrintVector.h"

#include <cstddef>
#include <iomanip>
#include <ostream>

#include "framework/MCMV.h"
#include "naivebayes/DumpNumber.h"

void PrintVector(std::ostream& out, const std::vector<double>& vector, const std::string& label) {
    constexpr std::size_t elementsPerLine = 8;
    if (vector.empty()) {
        out << label << ": <empty>"
            << "\n";
        return;
    }
    out << label << " (" << vector.size() << " element" << (vector.size() > 1 ? "s): \n" : "): \n");
    const std::streamsize precision = out.precision(5);
    for (std::size_t i = 0; i < vector.size(); ++i) {
        if (i > 0 && i % elementsPerLine == 0) out << "\n";
        if (MCMV::IsMissing(vector[i])) {
            out << "<missing> ";
        } else {
            out << std::setw(8) << nbscore::DumpNumber(vector[i]) << " ";
        }
    }
    out.precision(precision);
    out << "\n";
}
