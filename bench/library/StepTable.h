#pragma once

#include <functional>

/// Prints a line for each step of a long day's work: what it cost, and the most memory that was in use meanwhile.
class StepTable {
public:
    /// `textBytes`, of UTF-8, is what the memory is compared with.
    explicit StepTable(double textBytes);

    void step(const char *name, const std::function<void()> &body) const;

private:
    double m_textBytes;
    double m_ownBytes; ///< what the program takes without a library
};
