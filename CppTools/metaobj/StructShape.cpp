#include <CppTools/metaobj/StructShape.h>

#include <array>
#include <utility>

namespace CppTools::MetaObj {

namespace {

/// The shapes that were published last, one for each type. A result has few types of structures;
/// one that is forgotten here only costs memory.
class RecentShapes {
  public:
    RecentShapes() = default;
    RecentShapes(const RecentShapes&) = delete;
    RecentShapes& operator=(const RecentShapes&) = delete;

    ~RecentShapes() { isClosed_ = true; }

    /// Empty in a thread that is ending: its store is gone before its last structures are.
    static RecentShapes* OfThisThread() {
        static thread_local RecentShapes shapes;
        return isClosed_ ? nullptr : &shapes;
    }

    std::shared_ptr<StructShape> Find(std::string_view name, const MetaStruct* definition) const {
        const auto* found = FindItem(name, definition);
        return found != nullptr ? found->shape.lock() : nullptr;
    }

    void Keep(const std::shared_ptr<StructShape>& shape) {
        const StructType& type = *shape->GetType();
        const auto* found = FindItem(type.name, type.definition.get());
        auto& item = items_[found != nullptr ? static_cast<std::size_t>(found - items_.data())
                                             : std::exchange(next_, (next_ + 1) % items_.size())];
        item = {type.name, type.definition.get(), shape};
    }

  private:
    /// An address can be used again, but not while the shape that keeps the definition is there.
    struct Item {
        std::string name;
        const MetaStruct* definition = nullptr;
        std::weak_ptr<StructShape> shape;
    };

    const Item* FindItem(std::string_view name, const MetaStruct* definition) const {
        for (const auto& item : items_) {
            if (item.name == name && item.definition == definition) {
                return &item;
            }
        }
        return nullptr;
    }

    static thread_local bool isClosed_;

    std::array<Item, 8> items_;
    std::size_t next_ = 0;
};

thread_local bool RecentShapes::isClosed_ = false;

} // namespace

std::shared_ptr<StructShape> StructShape::FindRecent(std::string_view typeName,
                                                     const MetaStruct* definition) {
    const auto* recent = RecentShapes::OfThisThread();
    return recent != nullptr ? recent->Find(typeName, definition) : nullptr;
}

void StructShape::Publish(const std::shared_ptr<StructShape>& shape) {
    shape->isPublished_ = true;
    if (auto* recent = RecentShapes::OfThisThread()) {
        recent->Keep(shape);
    }
}

const StructShape::Entry* StructShape::FindByName(std::string_view name) const {
    const auto found = fields_.find(name);
    return found != fields_.end() ? &*found : nullptr;
}

void StructShape::Set(std::string_view name, std::shared_ptr<const std::string> documentation) {
    if (bySlot_.size() == bySlot_.capacity()) {
        bySlot_.reserve(bySlot_.size() * 2 + 1);
    }
    const auto [entry, isNew] =
        fields_.try_emplace(std::string(name), Field{bySlot_.size(), documentation});
    if (isNew) {
        bySlot_.push_back(&*entry);
    } else {
        entry->second.documentation = std::move(documentation);
    }
}

} // namespace CppTools::MetaObj
