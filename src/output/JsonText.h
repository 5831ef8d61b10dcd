#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nbscore {

/// Appends a text as a JSON string, in quotes. Bytes that are no UTF-8 become replacement characters.
void AppendJsonText(std::string& text, std::string_view content);

/// Appends a number as JSON: the shortest digits that read back as the same double; null for what JSON cannot hold
/// (NaN, infinities) and for the system-missing number.
void AppendJsonNumber(std::string& text, double number);

/// Appends indented JSON to a text, piece by piece. It keeps no tree, so it takes no memory but the text.
///
/// The caller must end what it begins and, in an object, add a name before each value.
class JsonWriter {
public:
    /// @param destination borrowed.
    explicit JsonWriter(std::string& destination) : text(destination) {}

    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginList() { Begin('['); }
    void EndList() { End(']'); }

    /// In an object, in front of each value.
    void AddName(std::string_view name);

    void AddText(std::string_view content);
    /// Null for what JSON cannot hold and for the system-missing number.
    void AddNumber(double number);
    void AddCount(std::size_t count);
    void AddTruth(bool truth);
    void AddNull();

private:
    void Begin(char bracket);
    void End(char bracket);
    void BeginValue();
    void BeginItem();
    void BeginLine();

    std::string& text;
    std::size_t depth = 0;
    bool isEmpty = true;
    bool isBehindName = false;
};

}  // namespace nbscore
