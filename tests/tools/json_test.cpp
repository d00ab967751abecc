// The probe's JSON: escapes, numbers, layout.
#include "tools/qlmprobe/json.h"

#include <gtest/gtest.h>

#include <limits>

namespace probe {
namespace {

std::string Printed(Json& json) {
  testing::internal::CaptureStdout();
  json.Print();
  return testing::internal::GetCapturedStdout();
}

TEST(Json, EmptyObject) {
  Json json;
  EXPECT_EQ(Printed(json), "{}\n");
}

TEST(Json, KeysStandInTheirOrderOnTheirOwnLines) {
  Json json;
  json.Put("b", 1);
  json.Put("a", true);
  EXPECT_EQ(Printed(json), "{\n  \"b\": 1,\n  \"a\": true\n}\n");
}

TEST(Json, TextIsUtf8WithItsSpecialCharactersEscaped) {
  Json json;
  json.Put("t", qlm::TextView(u"羽\"\\\t\x01"));
  EXPECT_EQ(Printed(json), "{\n  \"t\": \"羽\\\"\\\\\\u0009\\u0001\"\n}\n");
}

TEST(Json, FloatsHaveTheShortestFormOfTheirWidth) {
  Json json;
  json.Put("f", 0.1F);
  json.Put("d", 0.1);
  json.Put("w", static_cast<double>(0.1F));
  json.Put("n", 132.0F);
  EXPECT_EQ(Printed(json),
            "{\n  \"f\": 0.1,\n  \"d\": 0.1,\n  \"w\": 0.10000000149011612,\n  \"n\": 132\n}\n");
}

TEST(Json, WhatIsNoNumberIsAString) {
  Json json;
  json.Put("a", std::numeric_limits<float>::infinity());
  json.Put("b", -std::numeric_limits<double>::infinity());
  json.Put("c", std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(Printed(json), "{\n  \"a\": \"Infinity\",\n  \"b\": \"-Infinity\",\n  \"c\": \"NaN\"\n}\n");
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
  EXPECT_EQ(Printed(json),
            "{\n  \"rows\": [\n    [1, 2.5, false]\n  ],\n  \"pair\": [3, 4],\n  \"o\": {\n    \"k\": "
            "\"v\"\n  }\n}\n");
}

}  // namespace
}  // namespace probe
