#include <CppTools/autocli/formatters/FieldPlan.h>
#include <CppTools/metaobj/StructShape.h>

#include <utility>

namespace CppTools::AutoCli {

FieldPlan::FieldPlan(std::string typeName, const std::vector<std::string>& names,
                     const FormatParameters& params)
    : FieldPlan(std::move(typeName), params) {
    isChosen_ = true;
    for (const auto& name : names) {
        Add(name, kNoSlot);
    }
}

const std::vector<FieldPlan::Field>& FieldPlan::For(const MetaObj::StructShape& shape) {
    if (std::exchange(shape_, &shape) == &shape) {
        return fields_;
    }
    if (isChosen_) {
        for (auto& field : fields_) {
            const auto* entry = shape.Find(field.name);
            field.slot = entry != nullptr ? entry->second.slot : kNoSlot;
        }
        return fields_;
    }
    fields_.clear();
    for (const auto& [name, field] : shape.GetFields()) {
        Add(name, field.slot);
    }
    return fields_;
}

void FieldPlan::Add(const std::string& name, std::size_t slot) {
    fields_.push_back(
        {name, FieldFormat(typeName_, name, params_), slot, name.find('.') != std::string::npos});
}

} // namespace CppTools::AutoCli
