#pragma once

#include "networking/TimeoutError.h"

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <type_traits>

namespace WithTimeoutDetail {

// Runs task on a worker thread and waits at most `seconds` for it. Returns true when the task
// finished in time; otherwise asks it to stop through its stop token and returns false, leaving it
// to finish on its own. A negative, infinite, NaN or out-of-range duration is a programming fault:
// qFatal.
bool race(double seconds, std::function<void(std::stop_token)> task);

template <typename R> struct Outcome {
    std::optional<R> value;
    std::exception_ptr error;
};

template <> struct Outcome<void> {
    std::exception_ptr error;
};

} // namespace WithTimeoutDetail

// Runs operation on a worker thread and returns its value or rethrows its exception, unless
// `seconds` pass first: then it throws TimeoutError at once and the operation is asked to stop
// (an operation that takes a std::stop_token receives one). An operation that ignores the request
// keeps running on its worker until it returns, so it must own what it uses: capture by value.
template <typename Operation> auto withTimeout(double seconds, Operation operation)
{
    constexpr bool takesStopToken = std::is_invocable_v<Operation&, std::stop_token>;
    using Result = typename std::conditional_t<takesStopToken, std::invoke_result<Operation&, std::stop_token>,
        std::invoke_result<Operation&>>::type;

    auto outcome = std::make_shared<WithTimeoutDetail::Outcome<Result>>();
    auto shared = std::make_shared<Operation>(std::move(operation));
    const bool finished = WithTimeoutDetail::race(seconds, [outcome, shared](std::stop_token stop) {
        try {
            if constexpr (std::is_void_v<Result>) {
                if constexpr (takesStopToken)
                    (*shared)(stop);
                else
                    (*shared)();
            } else {
                if constexpr (takesStopToken)
                    outcome->value.emplace((*shared)(stop));
                else
                    outcome->value.emplace((*shared)());
            }
        } catch (...) {
            outcome->error = std::current_exception();
        }
    });
    if (!finished)
        throw TimeoutError();
    if (outcome->error)
        std::rethrow_exception(outcome->error);
    if constexpr (!std::is_void_v<Result>)
        return std::move(*outcome->value);
}
