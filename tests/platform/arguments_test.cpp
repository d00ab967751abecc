// Words of the command line, for a program with commands and for one without.
#include "platform/arguments.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using Words = std::vector<std::string>;

Program Probe() {
  Program program;
  program.name = "prog";
  program.version = "prog 1.0";
  program.help = "prog - does things";
  program.usage = "COMMAND [OPTION]...";
  program.footer = "The end.";
  program.commands = {
      {"one",
       "Takes one file.\nAnd options.",
       "FILE [OPTION]...",
       1,
       {{.name = "--flag", .help = "a flag"},
        {.name = "--fps", .value = "N", .help = "turns", .group = "Speed", .range = WholeRange{1, 1000}},
        {.name = "--before", .value = "FILE", .help = "first", .repeatable = true},
        {.name = "--at", .value = "MS", .help = "when", .required = true}}},
      {"many", "Takes files.", "FILE...", SIZE_MAX, {}}};
  return program;
}

Arguments Read(const Words& words) { return ReadArguments(Probe(), words); }

TEST(Arguments, OptionsAndFilesStandInAnyOrder) {
  const Arguments read = Read({"one", "--at", "-5,0", "a.bms", "--flag", "--fps=60"});
  EXPECT_EQ(read.wrong, "");
  EXPECT_EQ(read.command, "one");
  EXPECT_EQ(read.rest, Words{"a.bms"});
  EXPECT_EQ(read.values.size(), 3U);
  EXPECT_TRUE(read.values.contains("--flag"));
  EXPECT_EQ(read.values.at("--at"), Words{"-5,0"});
  EXPECT_EQ(read.values.at("--fps"), Words{"60"});
}

TEST(Arguments, AFileMayHaveTheNameOfACommand) {
  EXPECT_EQ(Read({"many", "one", "many", "c"}).rest, (Words{"one", "many", "c"}));
}

TEST(Arguments, ValuesAreTakenAsTheyStand) {
  const Arguments read = Read({"one", "a", "--before", "[x]", "--at", "1", "--before", "--flag"});
  EXPECT_EQ(read.values.at("--before"), (Words{"[x]", "--flag"}));
  EXPECT_FALSE(read.values.contains("--flag"));
}

TEST(Arguments, WhatIsWrongIsToldInOneLine) {
  EXPECT_EQ(Read({}).wrong, "a command is missing");
  EXPECT_EQ(Read({"two\nlines"}).wrong, "there is no command two lines");
  EXPECT_EQ(Read({"one", "--at", "1"}).wrong, "FILE is required");
  EXPECT_EQ(Read({"one", "a"}).wrong, "--at is required");
  EXPECT_EQ(Read({"one", "a", "--at"}).wrong, "--at: 1 required MS missing");
  EXPECT_EQ(Read({"one", "a", "b", "--at", "1"}).wrong, "The following argument was not expected: b");
  EXPECT_EQ(Read({"one", "a", "--at", "1", "--wat"}).wrong, "The following argument was not expected: --wat");
  EXPECT_NE(Read({"one", "a", "--at", "1", "--at", "2"}).wrong, "");
  EXPECT_NE(Read({"one", "a", "--at", "1", "--flag=no"}).wrong, "");
  for (const std::string number : {"0", "1001", "x", "", "1.5", "0x10", " 1"}) {
    EXPECT_EQ(Read({"one", "a", "--at", "1", "--fps", number}).wrong,
              "--fps: a whole number from 1 to 1000 is wanted, not " + number);
  }
}

TEST(Arguments, HelpListsCommandsByTheirFirstLine) {
  EXPECT_EQ(Read({"--help"}).answer,
            "prog - does things\n"
            "\n"
            "Usage: prog COMMAND [OPTION]...\n"
            "\n"
            "Options:\n"
            "  --help                shows this text\n"
            "  --version             shows the version\n"
            "\n"
            "Commands:\n"
            "  one                   Takes one file.\n"
            "  many                  Takes files.\n"
            "\n"
            "The end.\n");
}

TEST(Arguments, HelpOfACommandTellsItsOptions) {
  const Arguments read = Read({"one", "--help"});
  EXPECT_EQ(read.wrong, "");
  EXPECT_EQ(read.answer,
            "Takes one file.\n"
            "And options.\n"
            "\n"
            "Usage: prog one FILE [OPTION]...\n"
            "\n"
            "Options:\n"
            "  --help                shows this text\n"
            "  --flag                a flag\n"
            "  --before FILE         first\n"
            "  --at MS               when\n"
            "\n"
            "Speed:\n"
            "  --fps N               turns\n"
            "\n"
            "The end.\n");
}

TEST(Arguments, VersionIsAnswered) { EXPECT_EQ(Read({"--version"}).answer, "prog 1.0\n"); }

TEST(Arguments, WithoutCommandsOnlyDoubleDashWordsAreLookedAt) {
  Program program;
  program.name = "game";
  program.options = {{.name = "--demo"}, {.name = "--set", .value = "NAME=VALUE", .repeatable = true}};
  const Arguments read =
      ReadArguments(program, Words{"-B-", "--set", "A=1", "/x", "", "++", "--demo", "-", "-x=1"});
  EXPECT_EQ(read.wrong, "");
  EXPECT_EQ(read.rest, (Words{"-B-", "/x", "", "++", "-", "-x=1"}));
  EXPECT_EQ(read.values.at("--set"), Words{"A=1"});
  EXPECT_TRUE(read.values.contains("--demo"));
  EXPECT_NE(ReadArguments(program, Words{"a", "--wat"}).wrong, "");
  EXPECT_NE(ReadArguments(program, Words{"a", "--set"}).wrong, "");
}

TEST(Arguments, NumbersFillTheirWord) {
  EXPECT_EQ(ToNumber("-12"), -12);
  EXPECT_EQ(ToNumber("010"), 10);
  for (const char* const word : {"", "1x", " 1", "+1", "9223372036854775808"})
    EXPECT_EQ(ToNumber(word), std::nullopt) << word;
}

}  // namespace
}  // namespace platform
