#pragma once

#include <exception>

// Thrown by withTimeout when the deadline passes before the operation finishes.
struct TimeoutError : std::exception {
    const char* what() const noexcept override { return "the operation timed out"; }
};
