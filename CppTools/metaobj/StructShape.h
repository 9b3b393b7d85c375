#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace CppTools::MetaObj {

class MetaStruct;

/// What structures of one type have in common: a name, and perhaps a definition.
struct StructType {
    std::string name;
    std::shared_ptr<MetaStruct> definition;
};

/// The fields of a structure without their values: names, documentation, and the slot in which a
/// structure keeps each value. A structure that is part of nothing has a shape of its own, which
/// grows with it. As part of a list or of another structure it publishes its shape: from then on
/// this never changes, and later structures of the type begin with it, so that the rows of a list
/// pay for the names of their fields once.
class StructShape {
  public:
    struct Field {
        std::size_t slot;
        std::shared_ptr<const std::string> documentation; ///< Empty when none was given.

        bool IsDocumentedBy(std::string_view text) const {
            return documentation ? *documentation == text : text.empty();
        }
    };

    using Fields = std::map<std::string, Field, std::less<>>;
    using Entry = Fields::value_type;

    explicit StructShape(std::shared_ptr<const StructType> type) : type_(std::move(type)) {}

    StructShape(const StructShape&) = delete;
    StructShape& operator=(const StructShape&) = delete;

    static std::shared_ptr<StructShape> New(StructType type) {
        return std::make_shared<StructShape>(std::make_shared<const StructType>(std::move(type)));
    }

    /// The shape that was published last, in this thread, by structures of this type that are
    /// still there; empty when there is none.
    static std::shared_ptr<StructShape> FindRecent(std::string_view typeName,
                                                   const MetaStruct* definition);

    /// Makes `shape` the one that the next structures of its type begin with.
    static void Publish(const std::shared_ptr<StructShape>& shape);

    bool IsPublished() const { return isPublished_; }

    /// Shared by all shapes that were made from one another.
    const std::shared_ptr<const StructType>& GetType() const { return type_; }

    /// In ascending order of the names.
    const Fields& GetFields() const { return fields_; }

    std::size_t GetCount() const { return bySlot_.size(); }

    /// Null for an unknown name. `likelySlot` is looked at first: structures of one type are
    /// mostly filled in one order.
    const Entry* Find(std::string_view name, std::size_t likelySlot = 0) const {
        return likelySlot < bySlot_.size() && bySlot_[likelySlot]->first == name
                   ? bySlot_[likelySlot]
                   : FindByName(name);
    }

    const Entry& AtSlot(std::size_t slot) const { return *bySlot_[slot]; }

    /// Adds a field in the next slot, or replaces its documentation. Logarithmic.
    void Set(std::string_view name, std::shared_ptr<const std::string> documentation);

  private:
    const Entry* FindByName(std::string_view name) const;

    std::shared_ptr<const StructType> type_;
    Fields fields_;
    std::vector<Entry*> bySlot_;
    bool isPublished_ = false;
};

} // namespace CppTools::MetaObj
