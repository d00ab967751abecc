// Jobs, each with its own lock, and the threads that run them.
#include "platform/sound_decoding.h"

#include <chrono>
#include <system_error>
#include <utility>

#include "platform/heap.h"

namespace platform {

bool DecodingOrders::GoOn(size_t bytes) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return givenUp_ || wanted_ || bytes <= mostAhead_; });
  return !givenUp_;
}

void DecodingOrders::Set(bool& order) {
  {
    const std::lock_guard lock(mutex_);
    order = true;
  }
  changed_.notify_all();
}

struct SoundDecoding::Job {
  Job(DecodingWork theWork, size_t mostAhead) : orders(mostAhead), work(std::move(theWork)) {}

  // One thread alone runs the work, whoever comes first.
  void Run() {
    {
      const std::lock_guard lock(mutex);
      if (begun) return;
      begun = true;
    }
    DecodedSound decoded;
    decoded.error = DecodeError::kBroken;
    if (orders.GoOn(0) && !WithinMemory([&] { decoded = work(&orders); }))
      decoded.error = DecodeError::kTooLong;
    // A decoder that makes room by doubling may leave half of it empty.
    if (decoded.samples.capacity() - decoded.samples.size() > decoded.samples.size() / 8) {
      WithinMemory([&] { decoded.samples.shrink_to_fit(); });
    }
    {
      const std::lock_guard lock(mutex);
      sound = std::move(decoded);
      work = nullptr;  // with the bytes that it holds
      done = true;
    }
    finished.notify_all();
  }

  DecodingOrders orders;
  DecodingWork work;
  bool threaded = false;
  std::mutex mutex;
  std::condition_variable finished;
  bool begun = false;
  bool done = false;
  DecodedSound sound;
};

SoundDecoding::SoundDecoding(std::shared_ptr<Job> job) : job_(std::move(job)) {}

SoundDecoding::~SoundDecoding() { GiveUp(); }

bool SoundDecoding::DoneWithin(uint32_t milliseconds) {
  job_->orders.Want();
  if (!job_->threaded) return true;
  std::unique_lock lock(job_->mutex);
  return job_->finished.wait_for(lock, std::chrono::milliseconds(milliseconds), [&] { return job_->done; });
}

void SoundDecoding::GiveUp() { job_->orders.GiveUp(); }

DecodedSound SoundDecoding::Take() {
  job_->orders.Want();
  if (!job_->threaded) job_->Run();
  std::unique_lock lock(job_->mutex);
  job_->finished.wait(lock, [&] { return job_->done; });
  return std::move(job_->sound);
}

SoundDecoders::SoundDecoders(size_t threads) {
  try {
    while (threads_.size() < threads) threads_.emplace_back([this] { Work(); });
  } catch (const std::system_error&) {  // those that there are will do
  }
}

SoundDecoders::~SoundDecoders() {
  {
    const std::lock_guard lock(mutex_);
    waiting_.clear();
    for (const auto& job : running_) job->orders.GiveUp();
    ending_ = true;
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

std::unique_ptr<SoundDecoding> SoundDecoders::Begin(DecodingWork work, size_t mostAhead) {
  auto job = std::make_shared<SoundDecoding::Job>(std::move(work), mostAhead);
  job->threaded = !threads_.empty();
  if (job->threaded) {
    {
      const std::lock_guard lock(mutex_);
      waiting_.push_back(job);
    }
    changed_.notify_one();
  }
  return std::unique_ptr<SoundDecoding>(new SoundDecoding(std::move(job)));
}

void SoundDecoders::Work() {
  while (true) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return ending_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    const std::shared_ptr<SoundDecoding::Job> job = std::move(waiting_.front());
    waiting_.pop_front();
    running_.push_back(job);
    lock.unlock();
    job->Run();
    lock.lock();
    std::erase(running_, job);
  }
}

}  // namespace platform
