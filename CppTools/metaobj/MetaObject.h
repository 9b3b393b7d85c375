#pragma once

#include <CppTools/Export.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

/// The value model: every command result, help record and listing is a tree of these values.
namespace CppTools::MetaObj {

/// The kind of a value. The numbers are part of the interface.
enum class MetaType : int {
    Int = 0,
    Bool = 1,
    String = 2,
    Struct = 3,
    List = 4,
};

/// The printed name of a kind: "Int", "Bool", "String", "Struct" or "List", and the empty string
/// for any other number. The reference stays valid as long as the library is loaded.
CPPTOOLS_EXPORT const std::string& MetaTypeString(const MetaType& type);

/// A typed value. The kinds are `MetaBool`, `MetaInt`, `MetaString`, `MetaList` and `MetaStruct`.
///
/// Values are made by the static `New` functions of their classes and held by shared pointer.
/// Scalars never change after they were made, so that common ones can be shared by everybody.
/// A value is used by one thread at a time; only the reference counts are atomic.
class CPPTOOLS_EXPORT MetaObject {
  public:
    MetaObject(const MetaObject&) = delete;
    MetaObject& operator=(const MetaObject&) = delete;

    /// Whether `other`, the candidate, has the shape of this value, the pattern.
    ///
    /// For scalars the kinds decide and the values do not matter. On a mismatch one message is
    /// appended to `errors`, unless that is null: "Type mismatch in structure.  Expecting K got
    /// L". `MetaList` and `MetaStruct` have rules and messages of their own.
    /// For scalars, `other` must not be null.
    virtual bool IsSameStructure(const std::shared_ptr<MetaObject>& other,
                                 std::vector<std::string>* errors) const;

    /// The plain text form: "true" or "false", decimal integers, strings as they are, the items
    /// of a list joined by ", ", a structure as {'name' => 'value', }. Linear in its length.
    virtual std::string ToString() const = 0;

    /// The kind of this value, which tells the class to cast to.
    MetaType GetType() const { return type_; }

  protected:
    /// Keeps construction to the `New` functions: only value classes can name it, and no braces
    /// convert to it.
    struct FactoryFlag {
        explicit FactoryFlag() = default;
    };

    /// `type` must be the kind of the class that is being made.
    MetaObject(MetaType type, FactoryFlag) : type_(type) {}

    /// Values are only destroyed by the shared pointer that made them, as what they are.
    ~MetaObject() = default;

  private:
    MetaType type_;
};

/// Writes `object.ToString()`.
CPPTOOLS_EXPORT std::ostream& operator<<(std::ostream& out, const MetaObject& object);

} // namespace CppTools::MetaObj
