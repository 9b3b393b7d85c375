#pragma once

#include <CppTools/metaobj/MetaObject.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CppTools::MetaObj {
class MetaList;
class MetaStruct;
} // namespace CppTools::MetaObj

namespace CppTools::AutoCli {

/// Builds the value that an element describes from what is in it, in document order, whoever reads
/// it. Elements that mean nothing where they stand are passed over with all that is in them.
class ValueBuilder {
  public:
    /// Texts, and sections of character data, can come in pieces.
    enum class Content { Text, CharacterData, Other };

    /// The attribute of an element of this name that matters; null when none does.
    static const char* AttributeOf(std::string_view elementName);

    /// Begins an element; `attribute` is the value of the one that matters, empty when it is
    /// absent. Throws what `XmlUtil_BuildMetaObject` says for the names of elements, for the types
    /// of lists and structures and for fields.
    void StartElement(std::string_view name, const std::string& attribute);

    /// Ends the innermost element that has begun. Throws what `XmlUtil_BuildMetaObject` says for
    /// texts, and for what a list or structure does not take.
    void EndElement();

    /// What stands between elements: a text, a comment and whatever else has some content.
    void AddContent(Content kind, std::string_view text);

    /// Something without content: what follows does not continue the text before it.
    void EndText() { lastContent_ = Content::Other; }

    /// The value of the first element; empty when there was none, or it has not ended.
    const std::shared_ptr<MetaObj::MetaObject>& GetValue() const { return value_; }

  private:
    enum class Scalar { Int, Bool, String };
    enum class FieldState { Outside, BeforeValue, BehindValue };

    /// A structure or a list that has begun.
    struct Level {
        std::shared_ptr<MetaObj::MetaStruct> structure; ///< Empty for a list.
        std::string fieldName{};
        FieldState field = FieldState::Outside;
        MetaObj::MetaType listType{};
        std::shared_ptr<MetaObj::MetaList> list{}; ///< Empty until an item makes its template.
    };

    void StartInStructure(Level& level, std::string_view name, const std::string& attribute);
    void StartValue(std::string_view name, const std::string& attribute);
    void StartScalar(Scalar kind);

    void PassOver() { passedOver_ = 1; }

    void EndScalar(Scalar kind);
    void EndLevel();

    template <typename Value>
    void Deliver(Value&& value);

    std::vector<Level> levels_;
    std::optional<Scalar> scalar_; ///< The one that has begun.
    std::string text_;             ///< What the last piece of its content says.
    Content lastContent_ = Content::Other;
    std::size_t passedOver_ = 0; ///< How deep the present element is in one that is passed over.
    bool hasBegun_ = false;
    std::shared_ptr<MetaObj::MetaObject> value_;
};

} // namespace CppTools::AutoCli
