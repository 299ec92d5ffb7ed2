// How the host's functions say that something was not done.
#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace Host {

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;  // the command line is wrong
constexpr int kExitInUse = 3;  // another instance uses the data folder

/// Why, in one line for the user, and what the program ends with when it ends because of it.
struct Failure {
    std::string message;
    int exitCode = kExitFailure;
};

struct Nothing {};

/// What was made, or why it was not; a function that makes nothing returns `Outcome<>`.
template <class T = Nothing>
class [[nodiscard]] Outcome {
  public:
    // Implicit, so that a function returns the one or the other as it is.
    Outcome(T value) : content_(std::in_place_index<0>, std::move(value)) {}
    Outcome(Failure failure) : content_(std::in_place_index<1>, std::move(failure)) {}

    explicit operator bool() const { return content_.index() == 0; }
    /// Both of a success.
    T& operator*() {
        assert(*this);
        return *std::get_if<0>(&content_);
    }
    const T& operator*() const {
        assert(*this);
        return *std::get_if<0>(&content_);
    }
    /// Of a failure.
    const Failure& Why() const {
        assert(!*this);
        return *std::get_if<1>(&content_);
    }

  private:
    std::variant<T, Failure> content_;
};

inline const Outcome<> kDone{Nothing{}};

}  // namespace Host
