#include <CppTools/metaobj/FieldValue.h>
#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>
#include <CppTools/metaobj/ValueCast.h>

#include <algorithm>

namespace CppTools::MetaObj {

namespace {

/// Longer texts are kept as objects at once: beside them an object's own size does not matter,
/// and handing one out costs no copy.
constexpr std::size_t kLongestWithoutObject = 1024;

} // namespace

void FieldValue::Set(std::string_view text) {
    if (text.size() > kLongestWithoutObject) {
        content_ = Object(MetaString::New(std::string(text)));
    } else if (text.size() > kRoomInside) {
        LongText kept{std::make_unique_for_overwrite<char[]>(text.size()), text.size()};
        std::copy(text.begin(), text.end(), kept.bytes.get());
        content_ = std::move(kept);
    } else {
        ShortText kept{static_cast<std::uint8_t>(text.size()), {}};
        std::copy(text.begin(), text.end(), kept.bytes.begin());
        content_ = kept; // not before: the text may be that of the old value
    }
}

void FieldValue::Set(std::string&& text) {
    if (text.size() > kLongestWithoutObject) {
        content_ = Object(MetaString::New(std::move(text)));
    } else {
        Set(std::string_view(text));
    }
    text.clear();
}

bool FieldValue::IsScalarObject(const MetaObject& object) {
    return ValueAs<MetaInt>(object) != nullptr || ValueAs<MetaString>(object) != nullptr ||
           ValueAs<MetaBool>(object) != nullptr;
}

bool FieldValue::IsSameStructure(FieldValue& other, std::vector<std::string>* errors) {
    return GetType() == other.GetType() &&
           (IsScalar() || AsObject()->IsSameStructure(other.AsObject(), errors));
}

const std::shared_ptr<MetaObject>& FieldValue::AsObject() {
    if (auto* object = std::get_if<Object>(&content_)) {
        return *object;
    }
    if (const auto* value = std::get_if<bool>(&content_)) {
        return content_.emplace<Object>(MetaBool::New(*value));
    }
    if (const auto* number = std::get_if<long>(&content_)) {
        return content_.emplace<Object>(MetaInt::New(*number));
    }
    return content_.emplace<Object>(MetaString::New(std::string(Text())));
}

} // namespace CppTools::MetaObj
