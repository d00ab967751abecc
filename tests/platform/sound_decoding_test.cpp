// Decoding on other threads: the order, the memory, and the giving up.
#include "platform/sound_decoding.h"

#include <gtest/gtest.h>

#include <atomic>
#include <vector>

namespace platform {
namespace {

DecodedSound SoundOf(std::string samples) {
  DecodedSound sound;
  sound.samples = std::move(samples);
  return sound;
}

DecodingWork Gives(const std::string& samples) {
  return [samples](DecodingOrders*) { return SoundOf(samples); };
}

TEST(SoundDecoding, EachGivesItsOwnSoundInWhateverOrderTheyAreTaken) {
  SoundDecoders decoders(3);
  std::vector<std::unique_ptr<SoundDecoding>> decodings;
  for (int i = 0; i < 20; ++i) decodings.push_back(decoders.Begin(Gives(std::to_string(i)), 0));
  for (const size_t i : {7U, 0U, 19U, 3U}) EXPECT_EQ(decodings[i]->Take().samples, std::to_string(i));
}

TEST(SoundDecoding, AreTakenUpInTheOrderInWhichTheyWereBegun) {
  std::vector<int> order;  // one thread alone writes
  std::vector<std::unique_ptr<SoundDecoding>> decodings;
  SoundDecoders decoders(1);
  for (int i = 0; i < 10; ++i) {
    decodings.push_back(decoders.Begin(
        [&order, i](DecodingOrders*) {
          order.push_back(i);
          return SoundOf("");
        },
        0));
  }
  decodings.back()->Take();
  EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

// Of the two sounds that want more than their share, the second one waits until it is wanted.
TEST(SoundDecoding, AheadOfItsTurnASoundTakesNoMoreThanItsShare) {
  SoundDecoders decoders(2);
  std::atomic<int> past = 0;
  std::atomic<int> reached = 0;
  const DecodingWork work = [&](DecodingOrders* orders) {
    EXPECT_TRUE(orders->GoOn(100));
    ++reached;
    if (orders->GoOn(101)) ++past;
    return SoundOf("long");
  };
  const auto first = decoders.Begin(work, 100);
  const auto second = decoders.Begin(work, 100);
  EXPECT_EQ(first->Take().samples, "long");
  while (reached < 2) std::this_thread::yield();
  EXPECT_EQ(past, 1);
  EXPECT_EQ(second->Take().samples, "long");
  EXPECT_EQ(past, 2);
}

TEST(SoundDecoding, OneThatIsGivenUpEnds) {
  SoundDecoders decoders(1);
  const auto decoding = decoders.Begin(
      [](DecodingOrders* orders) {
        while (orders->GoOn(0)) std::this_thread::yield();
        return SoundOf("given up");
      },
      0);
  EXPECT_FALSE(decoding->DoneWithin(1));
  decoding->GiveUp();
  EXPECT_EQ(decoding->Take().samples, "given up");
  // One that nobody has taken up yet is never begun.
  bool begun = false;
  {
    const auto blocking = decoders.Begin(
        [](DecodingOrders* orders) {
          orders->GoOn(1);  // waits to be wanted
          return SoundOf("");
        },
        0);
    const auto never = decoders.Begin(
        [&begun](DecodingOrders*) {
          begun = true;
          return SoundOf("");
        },
        0);
    never->GiveUp();
    blocking->Take();
    EXPECT_EQ(never->Take().error, DecodeError::kBroken);
  }
  EXPECT_FALSE(begun);
}

TEST(SoundDecoding, TheEndOfTheThreadsGivesUpAll) {
  std::vector<std::unique_ptr<SoundDecoding>> decodings;
  {
    SoundDecoders decoders(2);
    for (int i = 0; i < 5; ++i) {
      decodings.push_back(decoders.Begin(
          [](DecodingOrders* orders) {
            while (orders->GoOn(1)) {
            }
            return SoundOf("");
          },
          0));
    }
  }
  SUCCEED() << "it did not wait for what nobody will want";
}

TEST(SoundDecoding, WithoutAThreadItIsDoneWhenItIsTaken) {
  SoundDecoders decoders(0);
  const auto decoding = decoders.Begin(Gives("here"), 0);
  EXPECT_TRUE(decoding->DoneWithin(0));
  EXPECT_EQ(decoding->Take().samples, "here");
}

TEST(SoundDecoding, WhatHasNoMemoryIsTooLong) {
  SoundDecoders decoders(1);
  const auto decoding = decoders.Begin([](DecodingOrders*) -> DecodedSound { throw std::bad_alloc(); }, 0);
  EXPECT_EQ(decoding->Take().error, DecodeError::kTooLong);
}

}  // namespace
}  // namespace platform
