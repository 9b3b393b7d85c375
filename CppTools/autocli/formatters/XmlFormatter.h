#pragma once

#include <CppTools/autocli/formatters/Formatter.h>

namespace CppTools::MetaObj {
class MetaObject;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

/// A copy of `text` in which the ampersand, the angle brackets, the percent sign and both quotes
/// are entities. All other bytes, control characters included, stay as they are. Linear.
CPPTOOLS_EXPORT std::string SantizeString(std::string text);

/// "xml": a document that holds the formatting parameters and the typed value tree. Its `output`
/// element declares the namespace prefix "tandril" for "urn:corvane:tandril:output:1", the same
/// in every document.
class CPPTOOLS_EXPORT XmlFormatter : public Formatter {
  public:
    XmlFormatter();
    ~XmlFormatter() override;

    /// Always true. Without a root object the `root` element is empty.
    bool Format(const std::shared_ptr<CallSpec::Output>& output, FormatParameters& params,
                DisplayContext& display, std::ostream& out) override;

    /// Writes one value at a nesting level, three columns each; an empty one writes nothing.
    void Format(std::shared_ptr<MetaObj::MetaObject> value, std::ostream& out, int level);
};

} // namespace CppTools::AutoCli
