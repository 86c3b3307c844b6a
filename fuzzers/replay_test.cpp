// Runs every target with every file of its corpus and every input that ever broke it. A target that something does not
// hold for stops the program, which has then printed the name of the file.

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "target.h"

// Only a build with sanitizers has it.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace kwo::fuzz {
namespace {

namespace fs = std::filesystem;

std::string running;

void TellRunning() {
    std::fprintf(stderr, "the input was %s\n", running.c_str());
}

std::vector<fs::path> FilesOf(const fs::path& folder) {
    std::vector<fs::path> files;
    if (!fs::is_directory(folder)) return files;
    for (const auto& entry : fs::directory_iterator(folder))
        files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

void RunWith(const Target& target, const std::string& bytes) {
    // Of exactly the right size, so that a read past the end is seen.
    const std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
    Input input(copy);
    try {
        target.run(input);
    } catch (...) {
        ADD_FAILURE() << "an exception comes out with " << running;
    }
}

class Replay : public testing::TestWithParam<Target> {};

TEST_P(Replay, EveryInput) {
    const Target& target = GetParam();
    std::signal(SIGABRT, [](int) { TellRunning(); });
    if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(TellRunning);
    running = "empty";
    RunWith(target, {});
    std::size_t seeds = 0;
    for (const char* const kind : {"corpus", "crashes"}) {
        for (const fs::path& file : FilesOf(fs::path(KWO_FUZZ_FOLDER) / kind / target.name)) {
            running = file.string();
            std::ifstream stream(file, std::ios::binary);
            RunWith(target, {std::istreambuf_iterator<char>(stream), {}});
            ++seeds;
        }
    }
    EXPECT_GT(seeds, 0u) << "the target has no corpus";
    std::printf("%zu inputs\n", seeds);
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Replay, testing::ValuesIn(Targets()),
                         [](const auto& instance) { return std::string(instance.param.name); });

}  // namespace
}  // namespace kwo::fuzz
