#pragma once

#include <CppTools/metaobj/MetaObject.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace CppTools::MetaObj {

/// What a structure keeps of one field.
///
/// Numbers, switches and texts that were set as such are kept as such, most of them without any
/// memory of their own; they become value objects when somebody asks for one. From then on it is
/// the object that is kept, so that everybody who asks gets the same.
class FieldValue {
  public:
    /// Of a field that is not there.
    FieldValue() = default;

    void Set(bool value) { content_ = value; }

    void Set(long value) { content_ = value; }

    void Set(std::string_view text);

    /// Takes the text over; a very long one is not copied.
    void Set(std::string&& text);

    /// `object` must not be empty.
    void Set(const std::shared_ptr<MetaObject>& object) { content_ = object; }

    void Remove() { content_ = std::monostate(); }

    bool IsPresent() const { return !std::holds_alternative<std::monostate>(content_); }

    /// The kind of the value, which must be present.
    MetaType GetType() const {
        const auto* object = GetObject();
        return object != nullptr ? object->GetType() : kKeptTypes[content_.index()];
    }

    /// The value, which must be present, as an object; made now if it was not before. Valid until
    /// the value changes.
    const std::shared_ptr<MetaObject>& AsObject();

    /// Whether `other` has the kind and the shape of this value; both must be present. Says why not
    /// as `MetaObject::IsSameStructure` does, but for different kinds.
    bool IsSameStructure(FieldValue& other, std::vector<std::string>* errors);

    /// Whether both are scalars of the library and of the same kind.
    bool IsSameScalar(const FieldValue& other) const {
        return IsPresent() && other.IsPresent() && GetType() == other.GetType() && IsScalar() &&
               other.IsScalar();
    }

    /// The value when it is kept as an object; otherwise null.
    const MetaObject* GetObject() const {
        const auto* object = std::get_if<Object>(&content_);
        return object != nullptr ? object->get() : nullptr;
    }

    /// Calls `visitor` with the value, which must be present: as a bool, a long, a
    /// std::string_view or a const MetaObject&.
    template <typename Visitor>
    decltype(auto) Visit(Visitor&& visitor) const {
        if (const auto* object = std::get_if<Object>(&content_)) {
            return visitor(static_cast<const MetaObject&>(**object));
        }
        if (const auto* number = std::get_if<long>(&content_)) {
            return visitor(*number);
        }
        if (const auto* value = std::get_if<bool>(&content_)) {
            return visitor(*value);
        }
        return visitor(Text());
    }

  private:
    static constexpr std::size_t kRoomInside = 15;

    /// A text that needs no memory of its own.
    struct ShortText {
        std::uint8_t size;
        std::array<char, kRoomInside> bytes;
    };

    struct LongText {
        std::unique_ptr<char[]> bytes;
        std::size_t size;
    };

    using Object = std::shared_ptr<MetaObject>;
    using Content = std::variant<std::monostate, bool, long, ShortText, LongText, Object>;

    /// The kinds of what is kept as such, in the order of the alternatives.
    static constexpr std::array<MetaType, 5> kKeptTypes = {
        MetaType{}, MetaType::Bool, MetaType::Int, MetaType::String, MetaType::String};

    /// Whether this is one of the library's scalars, whose kinds alone decide a comparison.
    bool IsScalar() const { return GetObject() == nullptr || IsScalarObject(*GetObject()); }

    static bool IsScalarObject(const MetaObject& object);

    /// The text, when it is kept as such.
    std::string_view Text() const {
        if (const auto* text = std::get_if<ShortText>(&content_)) {
            return {text->bytes.data(), text->size};
        }
        const auto& text = std::get<LongText>(content_);
        return {text.bytes.get(), text.size};
    }

    Content content_;
};

} // namespace CppTools::MetaObj
