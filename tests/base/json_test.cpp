// JSON: escapes, numbers, layout.
#include "base/json.h"

#include <gtest/gtest.h>

#include <limits>

namespace qlm {
namespace {

TEST(Json, EmptyObject) {
  Json json;
  EXPECT_EQ(json.Take(), "{}\n");
}

TEST(Json, KeysStandInTheirOrderOnTheirOwnLines) {
  Json json;
  json.Put("b", 1);
  json.Put("a", true);
  EXPECT_EQ(json.Take(), "{\n  \"b\": 1,\n  \"a\": true\n}\n");
}

TEST(Json, TextIsUtf8WithItsSpecialCharactersEscaped) {
  Json json;
  json.Put("t", TextView(u"羽\"\\\t\x01"));
  EXPECT_EQ(json.Take(), "{\n  \"t\": \"羽\\\"\\\\\\u0009\\u0001\"\n}\n");
}

TEST(Json, FloatsHaveTheShortestFormOfTheirWidth) {
  Json json;
  json.Put("f", 0.1F);
  json.Put("d", 0.1);
  json.Put("w", static_cast<double>(0.1F));
  json.Put("n", 132.0F);
  EXPECT_EQ(json.Take(), "{\n  \"f\": 0.1,\n  \"d\": 0.1,\n  \"w\": 0.10000000149011612,\n  \"n\": 132\n}\n");
}

TEST(Json, WhatIsNoNumberIsAString) {
  Json json;
  json.Put("a", std::numeric_limits<float>::infinity());
  json.Put("b", -std::numeric_limits<double>::infinity());
  json.Put("c", std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(json.Take(), "{\n  \"a\": \"Infinity\",\n  \"b\": \"-Infinity\",\n  \"c\": \"NaN\"\n}\n");
}

TEST(Json, RowsAndNestedObjects) {
  Json json;
  json.Key("rows").BeginArray();
  json.Row(1, 2.5, false);
  json.EndArray();
  json.Put("pair", std::array<int32_t, 2>{3, 4});
  json.Key("o").BeginObject();
  json.Put("k", "v");
  json.EndObject();
  EXPECT_EQ(json.Take(),
            "{\n  \"rows\": [\n    [1, 2.5, false]\n  ],\n  \"pair\": [3, 4],\n  \"o\": {\n    \"k\": "
            "\"v\"\n  }\n}\n");
}

TEST(Json, EverythingStandsInOneLineWhereThatIsWanted) {
  Json json(JsonLayout::kOneLine);
  json.Put("a", 1);
  json.Key("b").BeginArray();
  json.Row(2, true);
  json.Row();
  json.EndArray();
  json.Key("c").BeginObject();
  json.EndObject();
  EXPECT_EQ(json.Take(), "{\"a\": 1, \"b\": [[2, true], []], \"c\": {}}\n");
}

}  // namespace
}  // namespace qlm
