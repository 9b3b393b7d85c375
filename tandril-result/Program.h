#pragma once

#include "Descriptor.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace TandrilResult {

/// A program that runs beside this one; what it prints can be read. Its standard input and error
/// are those of this process.
class Program {
  public:
    /// `words` are its name, found as a shell finds it, and its arguments. Throws ResultError when
    /// it cannot be started.
    explicit Program(const std::vector<std::string>& words);

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Ends the program if nobody has waited for it: nobody needs it any more.
    ~Program();

    /// Where its output can be read.
    int Output() const { return output_.Number(); }

    /// Waits for its end. The exit status; throws ResultError when a signal ended it.
    int Wait();

  private:
    std::string name_;
    Descriptor output_;
    pid_t process_ = -1; ///< -1 when it was waited for.
};

} // namespace TandrilResult
