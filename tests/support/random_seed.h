#ifndef STARTPLAN_TESTS_SUPPORT_RANDOM_SEED_H
#define STARTPLAN_TESTS_SUPPORT_RANDOM_SEED_H

#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace test_support {

// A generator with a new seed in every run, which is printed; STARTPLAN_TEST_SEED repeats a run.
class Random {
public:
    Random() : seed_(TakeSeed()), engine_(seed_)
    {
        std::cout << "STARTPLAN_TEST_SEED=" << seed_ << std::endl;
    }

    unsigned Seed() const { return seed_; }

    // 0 to count - 1.
    std::size_t Below(std::size_t count)
    {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(engine_);
    }

    bool OneIn(std::size_t count) { return Below(count) == 0; }

    // Up to `most` characters of an alphabet.
    std::string Text(const std::string& alphabet, std::size_t most)
    {
        std::string text(Below(most + 1), ' ');
        for (char& c : text) {
            c = alphabet[Below(alphabet.size())];
        }
        return text;
    }

private:
    static unsigned TakeSeed()
    {
        const char* given = std::getenv("STARTPLAN_TEST_SEED");
        return given == nullptr ? std::random_device()() : static_cast<unsigned>(std::stoul(given));
    }

    unsigned seed_;
    std::mt19937 engine_;
};

} // namespace test_support

#endif
