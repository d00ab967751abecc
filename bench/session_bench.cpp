// The session of a battle on 127.0.0.1: what the game pays in a turn, and how long a message takes.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/session.h"
#include "platform/session_service.h"

namespace {

using namespace platform;

// A session of so many ends in this program. Players are in the order in which they came.
std::vector<std::unique_ptr<SessionService>> Gather(size_t count) {
  std::vector<std::unique_ptr<SessionService>> ends;
  ends.push_back(SessionService::Open(0, u"A"));
  std::vector<std::u16string> notes;
  while (ends.size() < count) {
    std::unique_ptr<SessionService> joined;
    std::atomic<bool> done = false;
    std::thread joining([&] {
      joined = SessionService::Join({0x7F000001, ends[0]->Port()}, 0, u"B", notes);
      done = true;
    });
    while (!done) {
      for (const auto& end : ends) end->Receive();
    }
    joining.join();
    ends.push_back(std::move(joined));
  }
  const auto all = [&] {
    for (const auto& end : ends) {
      end->Receive();
      if (end->Players().size() != count) return false;
    }
    return true;
  };
  while (!all()) {
  }
  return ends;
}

// What a poll costs when nothing has come.
void CountNothing(benchmark::State& state) {
  OpenSession(0, u"A");
  for (auto _ : state) benchmark::DoNotOptimize(SessionMessageCount());
  LeaveSession();
}
BENCHMARK(CountNothing);

void PutMiddle(benchmark::State& state, std::vector<double>& times) {
  std::sort(times.begin(), times.end());
  state.counters["middle_us"] = times[times.size() / 2] * 1e6;
  state.counters["least_us"] = times.front() * 1e6;
}

double SecondsSince(std::chrono::steady_clock::time_point begin) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

// What the game pays to send to all others.
void SendToAll(benchmark::State& state) {
  const auto ends = Gather(5);
  const std::string body(40, 'x');
  std::vector<double> times;
  for (auto _ : state) {
    const auto begin = std::chrono::steady_clock::now();
    ends[0]->Send(0, body, 0);
    times.push_back(SecondsSince(begin));
    state.SetIterationTime(times.back());
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
    for (const auto& end : ends) end->Receive();
  }
  PutMiddle(state, times);
}
BENCHMARK(SendToAll)->Iterations(1000)->UseManualTime()->Unit(benchmark::kMicrosecond);

// To another end and back, both asking without rest; the middle one of all.
void RoundTrip(benchmark::State& state) {
  const auto ends = Gather(static_cast<size_t>(state.range(0)));
  const std::string body(40, 'x');
  const auto await = [](SessionService& end) {
    while (end.MessageCount() == 0) std::this_thread::yield();
    end.Receive();
  };
  std::vector<double> times;
  for (auto _ : state) {
    const auto begin = std::chrono::steady_clock::now();
    ends[0]->Send(ends[1]->PlayerId(), body, 0);
    await(*ends[1]);
    ends[1]->Send(ends[0]->PlayerId(), body, 0);
    await(*ends[0]);
    times.push_back(SecondsSince(begin));
    state.SetIterationTime(times.back());
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
  }
  PutMiddle(state, times);
}
BENCHMARK(RoundTrip)->Arg(2)->Arg(5)->Iterations(1000)->UseManualTime()->Unit(benchmark::kMicrosecond);

// From the moment at which one asks to be let in to a host that polls without rest, until it is in.
void JoinAndLeave(benchmark::State& state) {
  const auto host = SessionService::Open(0, u"A");
  std::atomic<bool> done = false;
  std::thread polling([&] {
    while (!done) {
      host->Receive();
      std::this_thread::yield();
    }
  });
  std::vector<std::u16string> notes;
  for (auto _ : state) {
    auto joined = SessionService::Join({0x7F000001, host->Port()}, 0, u"B", notes);
    state.PauseTiming();
    joined.reset();
    state.ResumeTiming();
  }
  done = true;
  polling.join();
}
BENCHMARK(JoinAndLeave)->Iterations(50)->UseRealTime()->Unit(benchmark::kMillisecond);

// The processor time of the service's thread in a session in which nobody says anything.
void IdleService(benchmark::State& state) {
  const auto ends = Gather(5);
  for (auto _ : state) {
    const std::clock_t begin = std::clock();
    std::this_thread::sleep_for(std::chrono::seconds(2));
    const double used = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    state.SetIterationTime(used / 2 / 5);
  }
}
BENCHMARK(IdleService)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
