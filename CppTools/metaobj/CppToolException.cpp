#include <CppTools/metaobj/CppToolException.h>

#include <utility>

namespace CppTools::MetaObj {

CppToolException::CppToolException(const char* message) : message_(message) {}

CppToolException::CppToolException(std::string message) : message_(std::move(message)) {}

CppToolException::CppToolException(const CppToolException&) = default;
CppToolException& CppToolException::operator=(const CppToolException&) = default;
CppToolException::~CppToolException() = default;

const char* CppToolException::what() const noexcept {
    return message_.c_str();
}

} // namespace CppTools::MetaObj
