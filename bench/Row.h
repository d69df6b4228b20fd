#pragma once

#include <functional>
#include <string>
#include <vector>

/// One job that must be quick, beside the straightforward way of doing the same.
struct BenchRow {
    std::string name;
    /// What is done once before: returns the two jobs, which keep what they need alive.
    struct Jobs {
        std::function<void()> straightforward; ///< empty where there is none to compare with
        std::function<void()> ours;
        double megabytes = 0; ///< UTF-8 megabytes that one run works on, or 0
        double items = 0; ///< things that one run works on, or 0
    };
    std::function<Jobs()> prepare;
};

using BenchRows = std::vector<BenchRow>;

[[nodiscard]] BenchRows libraryRows();
[[nodiscard]] BenchRows analysisRows();
[[nodiscard]] BenchRows exchangeRows();

/// Keeps the compiler from leaving out a computation whose result nobody reads.
template <typename T>
void keep(const T &value)
{
    asm volatile("" : : "r,m"(value) : "memory");
}
