#pragma once

#include "FieldSpec.h"
#include "Row.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace TandrilResult {

/// What the command line says about the fields.
struct FieldRules {
    std::string structure;         ///< Type name of the structures.
    std::vector<FieldSpec> fields; ///< In the order of the result; none for all that there are.
    std::map<std::string, std::string> defaults; ///< By field, in place of missing values.
    bool fill = false;  ///< Other missing values are empty texts, 0, false and empty lists.
    bool infer = false; ///< Types that are left open follow the first row instead of being string.
    bool isTyped = false;         ///< The input tells numbers from texts, so texts stay texts.
    std::set<std::string> nested; ///< Keys that hold further records and so are no fields.
};

/// Turns rows into structures that all have the same fields of the same types, as the elements of
/// a list must. What the rules leave open is decided by the first row.
class FieldPlan {
  public:
    explicit FieldPlan(FieldRules rules) : rules_(std::move(rules)) {}

    /// The row as the element of a document. Throws InputError, naming the field, for a value that
    /// is missing or of another type and for a key that the first row had not when the fields are
    /// its; ResultError for names and defaults that no document can hold.
    std::string StructureOf(const Row& row);

  private:
    struct Field {
        std::string name;
        Source source;
        ValueType type;
        std::string opening; ///< The tags in front of the value and behind it.
        std::string closing;
        std::string fallback; ///< What stands between them when the value is missing.
        bool hasFallback = false;
    };

    void DecideFields(const Row& row);
    std::vector<FieldSpec> FieldsOf(const Row& row) const;
    void CheckDefaults() const;
    Field MakeField(const FieldSpec& spec, const Row& row) const;
    void AddFallback(Field& field) const;
    void CheckKeys(const Record& record) const;
    void AppendField(std::string& xml, const Field& field, const Row& row) const;

    FieldRules rules_;
    std::vector<Field> fields_; ///< Empty before the first row.
    std::string opening_;
};

} // namespace TandrilResult
