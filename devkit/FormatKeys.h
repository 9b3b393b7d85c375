#pragma once

#include <devkit/DescriptorFile.h>
#include <devkit/OutputTypes.h>

namespace Devkit {

/// A format-parameter of a command: "units:Disk.Size" has the word "units", the type "Disk" and
/// the field "Size".
struct FormatKey {
    long line;
    std::string key;
    std::string value;
    std::string word;
    std::string type;  ///< Empty when the key names none.
    std::string field; ///< Empty when the key names none.
};

/// As they stand in the descriptor, those that the engine overwrites too.
std::vector<FormatKey> FormatKeysOf(const CommandElement& command);

/// The declared result of a command, and how it is to be shown.
class ShownOutput {
  public:
    explicit ShownOutput(CppTools::AutoCli::ExtensionCommand& command);

    const OutputTypes& Types() const { return types_; }

    /// What a key or a list of fields names in a structure; empty when there is nothing. The table
    /// looks into nested structures and does not mind blanks.
    std::shared_ptr<CppTools::MetaObj::MetaObject>
    FindField(const std::shared_ptr<CppTools::MetaObj::MetaStruct>& structure,
              const std::string& name) const;

    bool IsTable() const { return isTable_; }

    /// Of a list of structures; empty otherwise.
    const std::shared_ptr<CppTools::MetaObj::MetaStruct>& RowType() const { return rowType_; }

  private:
    OutputTypes types_;
    std::shared_ptr<CppTools::MetaObj::MetaStruct> rowType_;
    bool isTable_;
};

} // namespace Devkit
