// Decoding of sounds on other cores.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/decoded_sound.h"

namespace platform {

// What a decoder is told while it runs, from another thread.
class DecodingOrders {
 public:
  // `mostAhead` bytes are decoded before somebody waits for them.
  explicit DecodingOrders(size_t mostAhead) : mostAhead_(mostAhead) {}

  // Asked by the decoder between pieces, with the bytes that it has made. False when it is to give up. Waits
  // where the sound takes too much memory as long as nobody wants it.
  bool GoOn(size_t bytes);
  void GiveUp() { Set(givenUp_); }
  void Want() { Set(wanted_); }

 private:
  void Set(bool& order);

  const size_t mostAhead_;
  std::mutex mutex_;
  std::condition_variable changed_;
  bool givenUp_ = false;
  bool wanted_ = false;
};

// The work of one decoder. `orders` may be null.
using DecodingWork = std::function<DecodedSound(DecodingOrders* orders)>;

// One sound in work, or waiting for a thread. The destructor gives up what is not done yet.
class SoundDecoding {
 public:
  ~SoundDecoding();
  SoundDecoding(const SoundDecoding&) = delete;
  SoundDecoding& operator=(const SoundDecoding&) = delete;

  // Somebody wants it now: from here on it is decoded to its end.
  bool DoneWithin(uint32_t milliseconds);
  void GiveUp();
  // What the work gives, once; waits for it.
  DecodedSound Take();

 private:
  friend class SoundDecoders;
  struct Job;
  explicit SoundDecoding(std::shared_ptr<Job> job);

  std::shared_ptr<Job> job_;
};

// The threads. They take up one sound behind the other in the order in which they were begun.
class SoundDecoders {
 public:
  explicit SoundDecoders(size_t threads);
  // Gives up everything.
  ~SoundDecoders();
  SoundDecoders(const SoundDecoders&) = delete;
  SoundDecoders& operator=(const SoundDecoders&) = delete;

  // Where no thread could be had, the work is done in Take.
  std::unique_ptr<SoundDecoding> Begin(DecodingWork work, size_t mostAhead);

 private:
  void Work();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<SoundDecoding::Job>> waiting_;
  std::vector<std::shared_ptr<SoundDecoding::Job>> running_;
  bool ending_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace platform
