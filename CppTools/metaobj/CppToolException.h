#pragma once

#include <CppTools/Export.h>

#include <exception>
#include <string>

namespace CppTools::MetaObj {

/// The library's one exception type: a mistake of declaration or structure (a bad name, a
/// duplicate, an ill-fitting constraint, a broken plug-in descriptor), told in one English
/// sentence. Problems of a single call are never thrown; they are collected in its `Output`.
class CPPTOOLS_EXPORT CppToolException : public std::exception {
  public:
    /// Copies `message`, which must not be null.
    explicit CppToolException(const char* message);
    explicit CppToolException(std::string message);

    /// A copy has a message of its own.
    CppToolException(const CppToolException&);
    CppToolException& operator=(const CppToolException&);
    ~CppToolException() override;

    /// The message; valid as long as this exception is.
    const char* what() const noexcept override;

  private:
    std::string message_;
};

} // namespace CppTools::MetaObj

namespace CppTools {
using MetaObj::CppToolException;
} // namespace CppTools
