#include "output/JsonText.h"

#include <gtest/gtest.h>

#include <limits>

namespace nbscore::test {
namespace {

TEST(JsonWriter, WritesEachItemOnALineOfItsOwn) {
    std::string text;
    JsonWriter json(text);
    json.BeginObject();
    json.AddName("list");
    json.BeginList();
    json.AddText("a \"quote\"");
    json.AddNumber(0.5);
    json.BeginObject();
    json.EndObject();
    json.BeginList();
    json.EndList();
    json.EndList();
    json.AddName("truth");
    json.AddTruth(true);
    json.AddName("count");
    json.AddCount(3);
    json.AddName("none");
    json.AddNull();
    json.EndObject();
    EXPECT_EQ(text, R"({
  "list": [
    "a \"quote\"",
    0.5,
    {},
    []
  ],
  "truth": true,
  "count": 3,
  "none": null
})");
}

TEST(JsonWriter, WritesNull_ForNumbersThatJsonCannotHold) {
    std::string text;
    JsonWriter(text).AddNumber(std::numeric_limits<double>::infinity());
    EXPECT_EQ(text, "null");
}

}  // namespace
}  // namespace nbscore::test
