#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "evidence/Evidence.h"

namespace nbscore {

enum class EvidenceFormat { Text, Csv, JsonLines };

struct EvidenceReportOptions {
    EvidenceFormat format = EvidenceFormat::Text;
    /// Otherwise natural units.
    bool inDecibans = false;
    /// Of text: whether each weight has a bar of characters beside it.
    bool hasBars = false;
    /// Of a table: between its cells.
    char delimiter = ',';
};

/// What evidence is about.
struct ExplainedCase {
    /// From 1, and the line on which it begins.
    std::uint64_t row = 0;
    std::uint64_t line = 0;
    /// Of a set: the sub-model's label. Null of a single classifier.
    const std::string* subModel = nullptr;
    const std::vector<std::string>& categories;
    const std::vector<std::string>& predictors;
    const Evidence& evidence;
};

/// Writes evidence case by case, as text that the caller passes on.
class EvidenceReport {
public:
    virtual ~EvidenceReport() = default;

    virtual void AppendHeader(std::string& text) const = 0;
    virtual void AppendCase(std::string& text, const ExplainedCase& explained) = 0;
};

/// Numbers in the unit that was asked for.
class Units {
public:
    explicit Units(bool decibans) : inDecibans(decibans) {}

    std::optional<double> operator()(const std::optional<double>& weight) const {
        if (!weight || !inDecibans) return weight;
        return InDecibans(*weight);
    }
    const char* GetName() const { return inDecibans ? "decibans" : "nats"; }

private:
    bool inDecibans;
};

/// For people.
std::unique_ptr<EvidenceReport> MakeEvidenceText(const EvidenceReportOptions& options, const std::string& table);

/// In the format of the options.
/// @param table what the table of cases is called. @param isSet whether there are sub-models.
std::unique_ptr<EvidenceReport> MakeEvidenceReport(const EvidenceReportOptions& options, const std::string& table,
                                                   bool isSet);

}  // namespace nbscore
