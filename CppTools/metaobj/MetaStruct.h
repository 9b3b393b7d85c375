#pragma once

#include <CppTools/metaobj/MetaObject.h>

#include <cstdint>
#include <string_view>

namespace CppTools::MetaObj {

class FieldValue;
class MetaBool;
class MetaInt;
class MetaList;
class MetaString;
class StructShape;

/// Whether the whole name consists of one or more ASCII letters and digits.
CPPTOOLS_EXPORT bool IsValidStructName(const std::string& name);

/// Always true: fields may have any name. `SetField` asks it all the same, so that a rule would
/// have one place.
CPPTOOLS_EXPORT bool IsValidFieldName(const std::string& name);

/// A record with a type name and named fields, each a value with an optional line of
/// documentation. Fields are kept in ascending byte-wise name order.
///
/// A structure can be the definition of others, which may then only hold its fields, and the
/// template of a list. Either use locks it: its fields can be given new values but none can be
/// added or removed. Nothing unlocks.
///
/// Structures of one type share the list of their fields with those that became part of a list or
/// of another structure before them, and keep numbers, switches and short texts without an object
/// for each. A row of a table costs little more than its texts; looking a field up is logarithmic
/// in the number of fields.
class CPPTOOLS_EXPORT MetaStruct final : public MetaObject {
  public:
    /// One field's record.
    struct Field {
        std::shared_ptr<MetaObject> value; ///< Never empty.
        std::string documentation;         ///< Empty when none was given.
    };

    /// Throws "Invalid name specified for MetaStruct: " and the name, unless
    /// `IsValidStructName` accepts it.
    MetaStruct(std::string typeName, FactoryFlag flag);

    /// Takes over the type name of `definition`, which must not be null, and locks it.
    MetaStruct(const std::shared_ptr<MetaStruct>& definition, FactoryFlag flag);

    ~MetaStruct();

    /// An empty structure without definition; throws as the constructor does.
    static std::shared_ptr<MetaStruct> New(const std::string& typeName);
    static std::shared_ptr<MetaStruct> New(std::string&& typeName);
    static std::shared_ptr<MetaStruct> New(const char* typeName);

    /// An empty structure that may hold the fields of `definition`, which is locked by this.
    static std::shared_ptr<MetaStruct> New(const std::shared_ptr<MetaStruct>& definition);

    /// Valid as long as this structure.
    const std::string& GetTypeName() const;

    /// Whether the structure was made after a definition, whose type name it has.
    bool HasStructureDefinition() const;

    /// Empty when there is no definition; valid as long as this structure.
    const std::shared_ptr<MetaStruct>& GetStructureDefinition() const;

    /// Fixes the set of fields for good.
    void LockStructure() { locked_ = true; }

    /// Whether there is a field of that name. Logarithmic.
    bool HasField(const std::string& name) const;

    /// Empty when there is no such field. Always the same object, until the field is set again; a
    /// value that was not set as an object becomes one now.
    std::shared_ptr<MetaObject> GetField(const std::string& name) const;

    /// The kind of the field's value. For an unknown name the *integer* 1 is thrown, which
    /// callers avoid by asking `HasField` first.
    MetaType GetFieldType(const std::string& name) const;

    /// The documentation, or "Documentation missing" when that is empty; valid until the field
    /// changes. Throws "Field F is not present in the structure S" for an unknown name.
    const std::string& GetFieldDocumentation(const std::string& name) const;

    /// In ascending order, as in every walk over the fields.
    std::vector<std::string> GetFieldNames() const;

    /// Throws "Structure is locked, unable to remove fields"; an absent field is no error.
    void RemoveField(const std::string& name);

    /// Whether the definition, if there is one, has the shape of this structure.
    bool MatchesStructureDefinition() const;

    /// Creates or replaces a field. The value's kind is not checked here; only comparison looks
    /// at kinds. The structure is unchanged when this throws:
    /// - "Invalid NULL value was assigned to the field F in the structure S";
    /// - "Unable to set new field F on structure. Structure has been locked";
    /// - "Unable to set new field F on structure.  The field does not match the Structure
    ///   definition for this MetaStruct.".
    void SetField(const std::string& name, const std::shared_ptr<MetaObject>& value,
                  const std::string& documentation);

    /// The forms below set a value without documentation. Numbers, switches and texts become
    /// values of their kind, vectors become lists. Character pointers must not be null.
    void SetField(const std::string& name, const std::shared_ptr<MetaObject>& value);
    void SetField(const std::string& name, const std::shared_ptr<MetaList>& value);
    void SetField(const std::string& name, const std::shared_ptr<MetaStruct>& value);
    void SetField(const std::string& name, const std::shared_ptr<MetaInt>& value);
    void SetField(const std::string& name, const std::shared_ptr<MetaBool>& value);
    void SetField(const std::string& name, const std::shared_ptr<MetaString>& value);
    void SetField(const std::string& name, long value);
    void SetField(const std::string& name, int value);
    void SetField(const std::string& name, bool value);
    void SetField(const std::string& name, const std::string& value);
    void SetField(const std::string& name, const char* value);
    void SetField(const std::string& name, std::string&& value);
    void SetField(const std::string& name, const std::vector<std::string>& values);
    void SetField(const std::string& name, std::vector<std::string>&& values);
    void SetField(const std::string& name, const std::vector<long>& values);
    void SetField(const std::string& name, const std::vector<bool>& values);

    /// The same for a field that is named by a text constant.
    void SetField(const char* name, const std::shared_ptr<MetaObject>& value);
    void SetField(const char* name, const std::shared_ptr<MetaList>& value);
    void SetField(const char* name, const std::shared_ptr<MetaStruct>& value);
    void SetField(const char* name, const std::shared_ptr<MetaInt>& value);
    void SetField(const char* name, const std::shared_ptr<MetaBool>& value);
    void SetField(const char* name, const std::shared_ptr<MetaString>& value);
    void SetField(const char* name, long value);
    void SetField(const char* name, int value);
    void SetField(const char* name, bool value);
    void SetField(const char* name, const std::string& value);
    void SetField(const char* name, const char* value);
    void SetField(const char* name, std::string&& value);
    void SetField(const char* name, const std::vector<std::string>& values);
    void SetField(const char* name, std::vector<std::string>&& values);
    void SetField(const char* name, const std::vector<long>& values);
    void SetField(const char* name, const std::vector<bool>& values);

    /// Compares the fields' names and kinds, nested ones included, with this structure as the
    /// pattern. A null `other` is accepted, and different type names are reported in `errors`
    /// without counting as a mismatch.
    bool IsSameStructure(const std::shared_ptr<MetaObject>& other,
                         std::vector<std::string>* errors) const override;

    /// {'a' => '1', 'b' => 'x', } for the fields a and b; {} without fields.
    std::string ToString() const override;

  private:
    friend class StructFields;

    bool HasSameFields(const MetaStruct& other, std::vector<std::string>* errors) const;

    /// Where the value of a field is to be put, which may not be there yet: what all forms of
    /// `SetField` come down to.
    FieldValue& SlotFor(std::string_view name, const std::string& documentation);
    void CheckNewField(const std::string& name) const;
    FieldValue& NewSlotFor(std::string_view name, const std::string& documentation);
    void TakeOwnShape();

    // In the room that the base class leaves.
    std::uint32_t locked_ : 1 = 0;
    std::uint32_t removed_ : 31 = 0; ///< The fields that were removed and still have their slot.
    std::shared_ptr<StructShape> shape_;
    /// By slot; those that are missing at the end are of fields that are not there. Handing out a
    /// value as an object changes how it is kept, not what it is.
    mutable std::vector<FieldValue> values_;
};

} // namespace CppTools::MetaObj
