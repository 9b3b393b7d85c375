#pragma once

#include <stdexcept>

namespace TandrilResult {

/// What is wrong with the input: a line, a value, a record. Says nothing of where the input came
/// from; that is added by those who know.
class InputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Why there is no result. It takes the place of the result on standard output.
class ResultError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What has been printed did not arrive, so nothing more can be said there.
class OutputError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace TandrilResult
