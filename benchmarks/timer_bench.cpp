#include <benchmark/benchmark.h>
#include <event2/event.h>
#include <malloc.h>
#include <uv.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "component/component.h"
#include "platform/simulated/simulated_desktop.h"
#include "timers/time_double.h"
#include "timers/timer_registry.h"

// The timer registry beside two event loops and the heap that one would write by hand. Each keeps SIZE alarms pending
// far ahead at random times; measured is one operation, of a batch, on top of them:
//   Add       a new alarm at a random time
//   Cancel    one of them, in random order
//   Fire      one that is due, its callback included
//   NextDue   when the next one is due
// And once for each: the memory that an alarm takes while it is pending, as the heap of the C library counts it.

namespace kwo::timers {
namespace {

constexpr int kBatch = 1'000;
constexpr std::int64_t kFarMs = 1'000'000'000;

std::vector<std::int64_t> RandomWaits(std::size_t count) {
    std::mt19937 random(20261121);
    std::uniform_int_distribution<std::int64_t> wait(kFarMs / 1'000, kFarMs);
    std::vector<std::int64_t> waits(count);
    for (auto& one : waits)
        one = wait(random);
    return waits;
}

std::vector<int> RandomOrder() {
    std::vector<int> order(kBatch);
    for (int i = 0; i < kBatch; ++i)
        order[static_cast<std::size_t>(i)] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    return order;
}

/// A clock and a platform timer that cost next to nothing.
class StillClock final : public platform::Clock {
public:
    std::optional<std::int64_t> CounterFrequency() override { return 10'000'000; }
    std::int64_t Counter() override { return 1'000'000'000'000; }
    std::uint32_t TickCount() override { return 0; }
    platform::Date Now() override { return {46'342}; }
    std::optional<std::int64_t> LocalFileTimeToUtc(std::int64_t fileTime) override { return fileTime; }
};
class StillTimers final : public platform::TimerService {
public:
    std::int32_t Start(std::uint32_t, platform::TimerHandler& started) override {
        handler = &started;
        return 1;
    }
    void Stop(std::int32_t) override {}
    platform::TimerHandler* handler = nullptr;
};

class Registry {
public:
    explicit Registry(std::size_t size) : mOwner(std::make_unique<Owner>()) {
        const auto waits = RandomWaits(size);
        for (const std::int64_t wait : waits)
            AddAt(wait);
        mFirst = mTag;
    }
    ~Registry() { mComponent.timers.CancelEntries(*mOwner, 0, 0); }

    void Begin() { mTag = mFirst; }
    void Add(std::int64_t wait) { AddAt(wait); }
    void Cancel(int which) { mComponent.timers.CancelEntries(*mOwner, 2, mFirst + 1 + which); }
    void AddDue(int before) { AddAt(-before); }
    void FireAll() { mTimers.handler->TimerProc(); }
    std::int64_t NextDue() { return mComponent.timers.Table().EarliestDue(); }
    int Fired() const { return mOwner->fired; }

private:
    struct Owner final : TimerOwner {
        void TimerTick(std::int32_t&, std::int32_t&, platform::Date&) override { ++fired; }
        void AddOwnerReference() noexcept override {}
        void ReleaseOwner() noexcept override {}
        int fired = 0;
    };
    void AddAt(std::int64_t wait) {
        const platform::Milliseconds now = mComponent.clock.KWO_TimerMs();
        mComponent.timers.AddAlarmEntry(*mOwner, {}, ++mTag, {now.scaled + platform::Milliseconds::Whole(wait).scaled});
    }

    platform::simulated::SimulatedDesktop mDesktop;
    StillClock mClock;
    StillTimers mTimers;
    std::unique_ptr<Owner> mOwner;
    component::Component mComponent{WithTime(mDesktop.Services(), mClock, mTimers)};
    std::int32_t mTag = 0;
    std::int32_t mFirst = 0;
};

class Libuv {
public:
    explicit Libuv(std::size_t size) : mPending(size), mBatch(kBatch) {
        uv_loop_init(&mLoop);
        const auto waits = RandomWaits(size);
        for (std::size_t i = 0; i < size; ++i)
            Start(mPending[i], waits[i]);
        for (auto& handle : mBatch)
            Init(handle);
    }
    ~Libuv() {
        for (auto& handle : mPending)
            uv_close(reinterpret_cast<uv_handle_t*>(&handle), nullptr);
        for (auto& handle : mBatch)
            uv_close(reinterpret_cast<uv_handle_t*>(&handle), nullptr);
        uv_run(&mLoop, UV_RUN_DEFAULT);
        uv_loop_close(&mLoop);
    }

    void Begin() { mNext = 0; }
    void Add(std::int64_t wait) { uv_timer_start(&Next(), Fire, static_cast<std::uint64_t>(wait), 0); }
    void Cancel(int which) { uv_timer_stop(&mBatch[static_cast<std::size_t>(which)]); }
    /// Due at once: its loop cannot be told that time has passed.
    void AddDue(int) { uv_timer_start(&Next(), Fire, 0, 0); }
    void FireAll() { uv_run(&mLoop, UV_RUN_NOWAIT); }
    std::int64_t NextDue() { return uv_backend_timeout(&mLoop); }
    int Fired() const { return mFired; }

private:
    static void Fire(uv_timer_t* handle) { ++static_cast<Libuv*>(handle->data)->mFired; }
    uv_timer_t& Next() { return mBatch[mNext++]; }
    void Init(uv_timer_t& handle) {
        uv_timer_init(&mLoop, &handle);
        handle.data = this;
    }
    void Start(uv_timer_t& handle, std::int64_t wait) {
        Init(handle);
        uv_timer_start(&handle, Fire, static_cast<std::uint64_t>(wait), 0);
    }

    uv_loop_t mLoop;
    std::vector<uv_timer_t> mPending;
    std::vector<uv_timer_t> mBatch;
    std::size_t mNext = 0;
    int mFired = 0;
};

class Libevent {
public:
    explicit Libevent(std::size_t size) : mBase(event_base_new()) {
        const auto waits = RandomWaits(size);
        for (const std::int64_t wait : waits) {
            mPending.push_back(event_new(mBase, -1, 0, Fire, this));
            AddTo(*mPending.back(), wait);
        }
        for (int i = 0; i < kBatch; ++i)
            mBatch.push_back(event_new(mBase, -1, 0, Fire, this));
    }
    ~Libevent() {
        for (auto* const list : {&mPending, &mBatch}) {
            for (event* const one : *list)
                event_free(one);
        }
        event_base_free(mBase);
    }

    void Begin() { mNext = 0; }
    void Add(std::int64_t wait) { AddTo(*mBatch[mNext++], wait); }
    void Cancel(int which) { event_del(mBatch[static_cast<std::size_t>(which)]); }
    void AddDue(int) { AddTo(*mBatch[mNext++], 0); }
    void FireAll() { event_base_loop(mBase, EVLOOP_NONBLOCK); }
    int Fired() const { return mFired; }

private:
    static void Fire(evutil_socket_t, short, void* self) { ++static_cast<Libevent*>(self)->mFired; }
    static void AddTo(event& one, std::int64_t waitMs) {
        const timeval wait = {waitMs / 1'000, waitMs % 1'000 * 1'000};
        event_add(&one, &wait);
    }

    event_base* mBase;
    std::vector<event*> mPending;
    std::vector<event*> mBatch;
    std::size_t mNext = 0;
    int mFired = 0;
};

/// A binary heap of due times that knows where each alarm stands in it.
class Heap {
public:
    explicit Heap(std::size_t size) {
        for (const std::int64_t wait : RandomWaits(size))
            Add(wait);
        mFirst = mPlaces.size();
    }

    void Begin() { mPlaces.resize(mFirst); }
    void Add(std::int64_t wait) {
        mPlaces.push_back(mHeap.size());
        mHeap.push_back({wait, mPlaces.size() - 1});
        Up(mHeap.size() - 1);
    }
    void Cancel(int which) { Remove(mPlaces[mFirst + static_cast<std::size_t>(which)]); }
    void AddDue(int before) { Add(-before); }
    void FireAll() {
        while (!mHeap.empty() && mHeap[0].due <= 0) {
            ++mFired;
            Remove(0);
        }
    }
    std::int64_t NextDue() { return mHeap[0].due; }
    int Fired() const { return mFired; }

private:
    struct Entry {
        std::int64_t due;
        std::size_t alarm;
    };
    void Put(std::size_t place, const Entry& entry) {
        mHeap[place] = entry;
        mPlaces[entry.alarm] = place;
    }
    void Up(std::size_t place) {
        const Entry entry = mHeap[place];
        for (; place > 0 && mHeap[(place - 1) / 2].due > entry.due; place = (place - 1) / 2)
            Put(place, mHeap[(place - 1) / 2]);
        Put(place, entry);
    }
    void Down(std::size_t place) {
        const Entry entry = mHeap[place];
        for (std::size_t child = 2 * place + 1; child < mHeap.size(); child = 2 * place + 1) {
            if (child + 1 < mHeap.size() && mHeap[child + 1].due < mHeap[child].due) ++child;
            if (mHeap[child].due >= entry.due) break;
            Put(place, mHeap[child]);
            place = child;
        }
        Put(place, entry);
    }
    void Remove(std::size_t place) {
        const Entry last = mHeap.back();
        mHeap.pop_back();
        if (place == mHeap.size()) return;
        Put(place, last);
        Up(place);
        Down(mPlaces[last.alarm]);
    }

    std::vector<Entry> mHeap;
    std::vector<std::size_t> mPlaces;
    std::size_t mFirst = 0;
    int mFired = 0;
};

double SecondsOf(const auto& body) {
    const auto begin = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count() / kBatch;
}

enum class Operation { Add, Cancel, Fire };

template <class Subject>
void Batches(benchmark::State& state, Operation measured) {
    Subject subject(static_cast<std::size_t>(state.range(0)));
    const auto waits = RandomWaits(kBatch);
    const auto order = RandomOrder();
    for (auto _ : state) {
        double seconds = 0;
        if (measured == Operation::Fire) {
            subject.Begin();
            for (int i = 0; i < kBatch; ++i)
                subject.AddDue(order[static_cast<std::size_t>(i)]);
            const int before = subject.Fired();
            seconds = SecondsOf([&] { subject.FireAll(); });
            if (subject.Fired() != before + kBatch) state.SkipWithError("not all have fired");
        } else {
            subject.Begin();
            const double adding = SecondsOf([&] {
                for (const std::int64_t wait : waits)
                    subject.Add(wait);
            });
            const double cancelling = SecondsOf([&] {
                for (const int which : order)
                    subject.Cancel(which);
            });
            seconds = measured == Operation::Add ? adding : cancelling;
        }
        state.SetIterationTime(seconds);
    }
}

template <class Subject>
void NextDue(benchmark::State& state) {
    Subject subject(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(subject.NextDue());
}

std::size_t BytesInUse() {
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

template <class Subject>
std::size_t BytesOf(std::size_t size) {
    const std::size_t before = BytesInUse();
    const Subject subject(size);
    return BytesInUse() - before;
}

template <class Subject>
void Memory(benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        const auto bytes = static_cast<double>(BytesOf<Subject>(size) - BytesOf<Subject>(0));
        state.counters["bytes_per_alarm"] = bytes / static_cast<double>(size);
    }
}

template <class Subject>
void RegisterFor(const std::string& subject, std::int64_t size) {
    constexpr double kShortest = 0.00005;  // of one operation's time: a batch counts as one
    const auto with = [&](const char* name, Operation operation) {
        benchmark::RegisterBenchmark((name + ("/" + subject)).c_str(),
                                     [operation](benchmark::State& state) { Batches<Subject>(state, operation); })
            ->Arg(size)
            ->UseManualTime()
            ->MinTime(kShortest);
    };
    with("Add", Operation::Add);
    with("Cancel", Operation::Cancel);
    with("Fire", Operation::Fire);
    if constexpr (requires(Subject one) { one.NextDue(); }) {
        benchmark::RegisterBenchmark(("NextDue/" + subject).c_str(), NextDue<Subject>)->Arg(size)->MinTime(0.01);
    }
    constexpr std::int64_t kFew = 10'000;  // fewer do not fill the first blocks
    if (size < kFew) return;
    benchmark::RegisterBenchmark(("Memory/" + subject).c_str(), Memory<Subject>)->Arg(size)->Iterations(1);
}

}  // namespace
}  // namespace kwo::timers

int main(int argc, char** argv) {
    using namespace kwo::timers;
    benchmark::Initialize(&argc, argv);
    for (const std::int64_t size : {1, 100, 10'000, 100'000, 1'000'000}) {
        RegisterFor<Registry>("registry", size);
        RegisterFor<Libuv>("libuv", size);
        RegisterFor<Libevent>("libevent", size);
        RegisterFor<Heap>("heap", size);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
