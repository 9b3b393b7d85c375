#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/autocli/formatters/FieldPlan.h>
#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/autocli/formatters/TextBuffer.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/PlainText.h>
#include <CppTools/metaobj/StructFields.h>
#include <CppTools/metaobj/ValueCast.h>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <algorithm>
#include <map>
#include <optional>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::FieldValue;
using MetaObj::MetaList;
using MetaObj::MetaStruct;
using MetaObj::MetaType;
using MetaObj::StructFields;

namespace {

/// The blanks between a column and the next.
constexpr std::size_t kColumnGap = 2;

std::vector<std::string> ColumnNames(const MetaStruct& structure, const FormatParameters& params) {
    std::vector<std::string> names;
    const std::string ownFields = "fields:" + structure.GetTypeName();
    if (params.HasParameter(ownFields)) {
        names = params.GetParameterAsList(ownFields);
    } else if (params.HasParameter("fields")) {
        names = params.GetParameterAsList("fields");
    } else if (params.HasParameter("table-columns")) {
        names = params.GetParameterAsList("table-columns");
    } else {
        names = structure.GetFieldNames();
    }
    for (auto& name : names) {
        boost::algorithm::trim_if(name, boost::algorithm::is_any_of(" \t\f\v\n\r"));
    }
    return names;
}

bool ShowsHeader(const FormatParameters& params) {
    const std::string& show = params.GetParameter("show-header");
    return (show.empty() ? params.GetParameter("table-header") : show) != "false";
}

/// One table on its way to a stream.
class Table {
  public:
    Table(const MetaList& list, const MetaStruct& structure, const FormatParameters& params,
          const DisplayContext& display, std::ostream& stream)
        : list_(list), params_(params), stream_(stream), out_(stream), fill_(stream.fill()),
          screenWidth_(display.width), columns_(ColumnNames(structure, params)),
          lastName_(columns_.empty() ? std::string() : columns_.back()), widths_(columns_.size()) {}

    bool Write() {
        if (!MeasureColumns()) {
            return false;
        }
        stream_.setf(std::ios_base::left, std::ios_base::adjustfield);
        if (ShowsHeader(params_) && !columns_.empty()) {
            WriteHeader();
        }
        DecideWrapping();
        return WriteRows();
    }

    /// Hands over what is written, and throws what the stream does.
    void Finish() { out_.Flush(); }

  private:
    /// Measures every cell, so that nothing is printed of a table with a bad row.
    bool MeasureColumns() {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            widths_[i] = columns_[i].size() + kColumnGap;
        }
        for (const auto& element : list_.GetObjects()) {
            const auto* row = MetaObj::ValueAs<MetaStruct>(*element);
            if (row == nullptr) {
                out_ << "Error: Unexpected type, unable to get struct from list\n";
                return false;
            }
            if (!MeasureRow(*row)) {
                return false;
            }
        }
        ShareWidths();
        return true;
    }

    bool MeasureRow(const MetaStruct& row) {
        const auto& fields = PlanOf(row);
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const auto* value = FindCell(row, fields[i]);
            if (value == nullptr) {
                out_ << "Error: Unknown field in field list: " << columns_[i] << '\n';
                return false;
            }
            widths_[i] = std::max(widths_[i], fields[i].format.Length(*value) + kColumnGap);
        }
        return true;
    }

    /// Columns of one name have one width.
    void ShareWidths() {
        std::map<std::string_view, std::size_t> widest;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            auto& width = widest[columns_[i]];
            width = std::max(width, widths_[i]);
        }
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            widths_[i] = widest[columns_[i]];
        }
    }

    void WriteHeader() {
        std::string line;
        for (std::size_t i = 0; i + 1 < columns_.size(); ++i) {
            out_ << columns_[i];
            out_.Fill(widths_[i] - columns_[i].size(), fill_);
            line.append(widths_[i] - kColumnGap, '-').append(kColumnGap, ' ');
        }
        out_ << lastName_ << '\n';
        if (params_.GetParameter("header-line") != "false") {
            out_ << line.append(lastName_.size(), '-') << '\n';
        }
    }

    /// The last column is wrapped only beside others, and only where the display is known to
    /// leave room for its name.
    void DecideWrapping() {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            fixedWidth_ += columns_[i] != lastName_ ? widths_[i] : 0;
        }
        wraps_ = params_.GetParameter("wrap-last") == "true" && fixedWidth_ != 0 &&
                 screenWidth_ >= fixedWidth_ + lastName_.size();
    }

    bool WriteRows() {
        for (const auto& element : list_.GetObjects()) {
            if (const auto* row = MetaObj::ValueAs<MetaStruct>(*element)) {
                if (!WriteRow(*row)) {
                    return false;
                }
            }
        }
        return true;
    }

    bool WriteRow(const MetaStruct& row) {
        const auto& fields = PlanOf(row);
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const auto* value = FindCell(row, fields[i]);
            if (value == nullptr) {
                out_ << "Unknown column " << columns_[i];
                return false;
            }
            WriteCell(fields[i], *value, widths_[i]);
        }
        out_ << '\n';
        out_.Flush(); // what writing a row does to values is seen by the next one
        return true;
    }

    void WriteCell(const FieldPlan::Field& field, const FieldValue& value, std::size_t width) {
        const bool isLast = field.name == lastName_;
        if (isLast && wraps_) {
            out_.Flush();
            AutoCli_FitString(static_cast<int>(fixedWidth_), static_cast<int>(screenWidth_),
                              MetaObj::PlainText(value), true, stream_, false, '\0', true);
        } else if (value.GetType() == MetaType::Int) {
            field.format.WriteRight(value, {width - kColumnGap, fill_}, out_);
            out_.Fill(kColumnGap, ' ');
        } else if (isLast) {
            field.format.Write(value, out_);
        } else {
            field.format.WriteLeft(value, {width, fill_}, out_);
        }
    }

    const std::vector<FieldPlan::Field>& PlanOf(const MetaStruct& row) {
        const std::string& typeName = row.GetTypeName();
        if (typeName != planType_) {
            planType_ = typeName;
            plan_.emplace(typeName, columns_, params_);
        }
        return plan_->For(StructFields(row).GetShape());
    }

    static const FieldValue* FindCell(const MetaStruct& row, const FieldPlan::Field& field) {
        return field.isPath ? FindSubField(row, field.name) : StructFields(row).AtSlot(field.slot);
    }

    const MetaList& list_;
    const FormatParameters& params_;
    std::ostream& stream_;
    TextBuffer out_;
    char fill_;
    std::size_t screenWidth_;
    std::vector<std::string> columns_;
    std::string lastName_;
    std::vector<std::size_t> widths_; ///< Of the columns, the gap behind them included.
    std::string planType_;            ///< The type of the structures that the plan is for; no
    std::optional<FieldPlan> plan_;   ///< type is called nothing.
    std::size_t fixedWidth_ = 0;
    bool wraps_ = false;
};

} // namespace

TableFormatter::TableFormatter() : Formatter("table") {
    SetDescription("Print a list of structs as a table, with each row being one entry in the list "
                   "and each column being a field of the structure.");
    AddParam("fields:<TypeName>",
             "The list of fields and the order in which to print them for the type named in "
             "<TypeName>",
             true);
    AddParam("show-header",
             "Optionally disable showing column headers by passing the 'false' value");
    AddParam("wrap-last", "If 'true' wrap the last column to the width of the terminal.");
    AddParam("units:<TypeName>.<FieldName>",
             "Use the given 'units' value as a suffix for a given field.  For example specifying "
             "\"units:ScsiDeviceList.Size\" = \"Mb\" would append the string 'Mb' to the end of a "
             "field");
    AddParam("printf:<TypeName>.<FieldName>",
             "Use the given 'printf' formatting string for printing a value.  This uses standard "
             "printf syntax to format and print a Value.  For example specifying "
             "\"units:ScsiDeviceList.Size\" = \"Mb\" would append the string 'Mb' to the end of a "
             "field");
    AddParam("header-line",
             "Optionally remove the line of '-' characters after the header.  By default this "
             "paramter is assumed to be true.  Setting it to 'false' will remove the line.  This "
             "parameter only has meaning if 'show-header' is also true");
}

TableFormatter::~TableFormatter() = default;

bool TableFormatter::Format(const std::shared_ptr<CallSpec::Output>& output,
                            FormatParameters& params, DisplayContext& display, std::ostream& out) {
    const auto list = std::dynamic_pointer_cast<MetaList>(output->GetRootObject());
    if (!list || list->GetListType() != MetaType::Struct) {
        throw CppToolException(
            "Error: Unexpected type for output, formatter, table, expected a List of structs");
    }
    if (const auto& structure = list->GetListStructure()) {
        Table table(*list, *structure, params, display, out);
        const bool isComplete = table.Write();
        table.Finish();
        return isComplete;
    }
    if (list->GetCount() == 0) {
        return true;
    }
    throw CppToolException("Error: Unable to get structure type from list output.");
}

} // namespace CppTools::AutoCli
