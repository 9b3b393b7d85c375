#pragma once

#include <CppTools/autocli/formatters/FieldFormat.h>

#include <map>
#include <string>
#include <vector>

namespace CppTools::MetaObj {
class StructShape;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

/// Which fields of the structures of one type are shown, where a structure keeps them, and how
/// they are formatted: worked out once for all structures of one shape.
class FieldPlan {
  public:
    struct Field {
        std::string name;
        FieldFormat format;
        std::size_t slot; ///< `kNoSlot` when no structure of this shape has the field.
        bool isPath;      ///< Whether the name holds a dot.
    };

    static constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

    /// Of all fields, in ascending order. `params` must outlive this, unchanged.
    FieldPlan(std::string typeName, const FormatParameters& params)
        : typeName_(std::move(typeName)), params_(params) {}

    /// Of these fields, in this order.
    FieldPlan(std::string typeName, const std::vector<std::string>& names,
              const FormatParameters& params);

    /// The fields of structures of this shape; valid until the next call.
    const std::vector<Field>& For(const MetaObj::StructShape& shape);

    /// Whether a structure has to have all fields, because they were asked for by name.
    bool IsChosen() const { return isChosen_; }

  private:
    void Add(const std::string& name, std::size_t slot);

    std::string typeName_;
    const FormatParameters& params_;
    std::vector<Field> fields_;
    bool isChosen_ = false;
    const MetaObj::StructShape* shape_ = nullptr; ///< The one that the slots belong to.
};

} // namespace CppTools::AutoCli
