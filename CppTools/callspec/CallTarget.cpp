#include <CppTools/callspec/CallTarget.h>

namespace CppTools::CallSpec {

CallTargetSpec::~CallTargetSpec() = default;
CallTarget::~CallTarget() = default;

} // namespace CppTools::CallSpec
