#pragma once

#include <CppTools/metaobj/FieldValue.h>
#include <CppTools/metaobj/MetaStruct.h>
#include <CppTools/metaobj/StructShape.h>

#include <algorithm>

namespace CppTools::MetaObj {

/// The fields of a structure as it keeps them, for those who read many: nothing becomes an object
/// and no name is copied. A range of names and values, in ascending order of the names.
class StructFields {
  public:
    struct Field {
        const std::string& name;
        FieldValue& value;
    };

    class Iterator {
      public:
        Iterator(const StructFields& fields, StructShape::Fields::const_iterator position)
            : fields_(&fields), position_(position) {
            SkipAbsent();
        }

        Field operator*() const { return {position_->first, *value_}; }

        Iterator& operator++() {
            ++position_;
            SkipAbsent();
            return *this;
        }

        bool operator==(const Iterator& other) const { return position_ == other.position_; }

      private:
        void SkipAbsent() {
            const auto end = fields_->shape_.GetFields().end();
            while (position_ != end &&
                   (value_ = fields_->AtSlot(position_->second.slot)) == nullptr) {
                ++position_;
            }
        }

        const StructFields* fields_;
        StructShape::Fields::const_iterator position_;
        FieldValue* value_ = nullptr;
    };

    /// `structure` must outlive this.
    explicit StructFields(const MetaStruct& structure)
        : shape_(*structure.shape_), values_(structure.values_) {}

    Iterator begin() const { return {*this, shape_.GetFields().begin()}; }

    Iterator end() const { return {*this, shape_.GetFields().end()}; }

    /// Linear.
    std::size_t GetCount() const {
        return static_cast<std::size_t>(std::count_if(
            values_.begin(), values_.end(), [](const auto& value) { return value.IsPresent(); }));
    }

    /// Null when there is no such field.
    FieldValue* Find(std::string_view name) const {
        const auto* entry = shape_.Find(name);
        return entry != nullptr ? AtSlot(entry->second.slot) : nullptr;
    }

    /// Null when there is no such slot or no such field.
    FieldValue* AtSlot(std::size_t slot) const {
        return slot < values_.size() && values_[slot].IsPresent() ? &values_[slot] : nullptr;
    }

    /// Whether both have the same fields, and in each a scalar of the same kind: the common case
    /// of rows, decided without a look at a name. If not, that says nothing.
    bool HasSameScalars(const StructFields& other) const {
        return &shape_ == &other.shape_ && values_.size() == other.values_.size() &&
               std::equal(values_.begin(), values_.end(), other.values_.begin(),
                          [](const FieldValue& mine, const FieldValue& theirs) {
                              return mine.IsSameScalar(theirs);
                          });
    }

    const StructShape& GetShape() const { return shape_; }

    /// Called when a structure becomes part of something else, so that others of its type are
    /// likely to follow. Other values are passed over.
    static void Publish(const MetaObject& value);

  private:
    const StructShape& shape_;
    std::vector<FieldValue>& values_;
};

} // namespace CppTools::MetaObj
