#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nbscore {

/// Appends indented JSON to a text, piece by piece. It keeps no tree: what was written takes no memory but the text's
/// own.
///
/// The caller sees to it that what is begun is ended, and that in an object each value follows a name.
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
