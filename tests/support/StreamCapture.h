#pragma once

#include <cerrno>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <unistd.h>

namespace TestSupport {

/// Takes over a standard descriptor of this process, whoever writes to it and however, until it
/// is asked for the text or destroyed. The descriptor is then no terminal.
class StreamCapture {
  public:
    explicit StreamCapture(int descriptor)
        : descriptor_(descriptor), file_(std::tmpfile(), &std::fclose) {
        Flush();
        saved_ = dup(descriptor_);
        if (!file_ || saved_ < 0 || dup2(fileno(file_.get()), descriptor_) < 0) {
            throw std::system_error(errno, std::generic_category(), "capture");
        }
    }

    StreamCapture(const StreamCapture&) = delete;
    StreamCapture& operator=(const StreamCapture&) = delete;

    ~StreamCapture() { Restore(); }

    /// Everything written since the beginning; puts the descriptor back.
    std::string Take() {
        Restore();
        std::string text;
        std::rewind(file_.get());
        for (int c = std::fgetc(file_.get()); c != EOF; c = std::fgetc(file_.get())) {
            text.push_back(static_cast<char>(c));
        }
        return text;
    }

  private:
    static void Flush() {
        std::cout.flush();
        std::cerr.flush();
        std::fflush(stdout);
        std::fflush(stderr);
    }

    void Restore() {
        if (saved_ >= 0) {
            Flush();
            dup2(saved_, descriptor_);
            close(saved_);
            saved_ = -1;
        }
    }

    int descriptor_;
    int saved_ = -1;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

/// What a call printed on the two standard streams.
struct Printed {
    std::string out;
    std::string err;
};

template <typename Call>
Printed PrintedBy(Call&& call) {
    StreamCapture out(STDOUT_FILENO);
    StreamCapture err(STDERR_FILENO);
    call();
    return {out.Take(), err.Take()};
}

} // namespace TestSupport
