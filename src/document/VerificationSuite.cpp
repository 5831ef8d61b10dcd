#include "document/VerificationSuite.h"

namespace nbscore {
namespace {

std::string ItemPath(const std::string& parentPath, const char* name, std::size_t index) {
    return parentPath + "/" + name + "[" + std::to_string(index + 1) + "]";
}

}  // namespace

DocumentPlace VerificationSuite::GetPlaceOfField(std::size_t field) const {
    return {source, fields[field].line, fields[field].column, ItemPath(fieldsPath, "VerificationField", field)};
}

DocumentPlace VerificationSuite::GetPlaceOfRow(std::size_t row) const {
    return {source, rows[row].line, rows[row].column, ItemPath(rowsPath, "row", row)};
}

}  // namespace nbscore
