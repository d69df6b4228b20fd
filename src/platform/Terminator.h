#pragma once

/// Ends the program in order.
class Terminator {
public:
    virtual ~Terminator() = default;
    virtual void terminate() = 0;
};
