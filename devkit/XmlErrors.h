#pragma once

#include <devkit/XmlFile.h>

#include <libxml/xmlerror.h>

namespace Devkit {

template <typename Function>
struct SecondArgument;

template <typename First, typename Second>
struct SecondArgument<void (*)(First, Second)> {
    using Type = Second;
};

/// Newer releases of libxml2 hand out constant errors.
using XmlErrorPointer = SecondArgument<xmlStructuredErrorFunc>::Type;

/// Appends an error to a vector of `XmlProblem`, once for each line.
void CollectError(void* problems, XmlErrorPointer error);

} // namespace Devkit
