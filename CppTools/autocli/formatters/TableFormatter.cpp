#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/TableFormatter.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/metaobj/CppToolException.h>
#include <CppTools/metaobj/MetaList.h>
#include <CppTools/metaobj/MetaStruct.h>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <algorithm>
#include <iomanip>
#include <map>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

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

int StreamWidth(std::size_t width) {
    return static_cast<int>(width);
}

/// One table on its way to a stream.
class Table {
  public:
    Table(const MetaList& list, const MetaStruct& structure, FormatParameters& params,
          const DisplayContext& display, std::ostream& out)
        : list_(list), params_(params), out_(out), screenWidth_(display.width),
          columns_(ColumnNames(structure, params)),
          lastName_(columns_.empty() ? std::string() : columns_.back()) {}

    bool Write() {
        if (!MeasureColumns()) {
            return false;
        }
        out_ << std::left;
        if (ShowsHeader(params_) && !columns_.empty()) {
            WriteHeader();
        }
        DecideWrapping();
        return WriteRows();
    }

  private:
    /// Measures every cell, so that nothing is printed of a table with a bad row.
    bool MeasureColumns() {
        for (const auto& column : columns_) {
            widths_[column] = column.size() + kColumnGap;
        }
        for (const auto& element : list_.GetObjects()) {
            const auto row = std::dynamic_pointer_cast<MetaStruct>(element);
            if (!row) {
                out_ << "Error: Unexpected type, unable to get struct from list\n";
                return false;
            }
            if (!MeasureRow(row)) {
                return false;
            }
        }
        return true;
    }

    bool MeasureRow(const std::shared_ptr<MetaStruct>& row) {
        for (const auto& column : columns_) {
            const auto value = GetSubField(row, column);
            if (!value) {
                out_ << "Error: Unknown field in field list: " << column << '\n';
                return false;
            }
            const std::string text =
                AutoCli_FormatField(row->GetTypeName(), column, value, params_);
            auto& width = widths_[column];
            width = std::max(width, text.size() + kColumnGap);
        }
        return true;
    }

    void WriteHeader() {
        std::string line;
        for (std::size_t i = 0; i + 1 < columns_.size(); ++i) {
            const std::size_t width = widths_.at(columns_[i]);
            out_ << std::setw(StreamWidth(width)) << columns_[i];
            line.append(width - kColumnGap, '-').append(kColumnGap, ' ');
        }
        out_ << lastName_ << '\n';
        if (params_.GetParameter("header-line") != "false") {
            out_ << line.append(lastName_.size(), '-') << '\n';
        }
    }

    /// The last column is wrapped only beside others, and only where the display is known to
    /// leave room for its name.
    void DecideWrapping() {
        for (const auto& column : columns_) {
            if (column != lastName_) {
                fixedWidth_ += widths_.at(column);
            }
        }
        wraps_ = params_.GetParameter("wrap-last") == "true" && fixedWidth_ != 0 &&
                 screenWidth_ >= fixedWidth_ + lastName_.size();
    }

    bool WriteRows() {
        for (const auto& element : list_.GetObjects()) {
            const auto row = std::dynamic_pointer_cast<MetaStruct>(element);
            if (!row) {
                continue;
            }
            for (const auto& column : columns_) {
                if (!WriteCell(row, column)) {
                    return false;
                }
            }
            out_ << '\n';
        }
        return true;
    }

    bool WriteCell(const std::shared_ptr<MetaStruct>& row, const std::string& column) {
        const auto value = GetSubField(row, column);
        if (!value) {
            out_ << "Unknown column " << column;
            return false;
        }
        if (wraps_ && column == lastName_) {
            AutoCli_FitString(StreamWidth(fixedWidth_), StreamWidth(screenWidth_),
                              value->ToString(), true, out_, false, '\0', true);
            return true;
        }
        const std::string text = AutoCli_FormatField(row->GetTypeName(), column, value, params_);
        const std::size_t width = widths_.at(column);
        if (value->GetType() == MetaType::Int) {
            out_ << std::right << std::setw(StreamWidth(width - kColumnGap)) << text << "  "
                 << std::left;
        } else if (column != lastName_) {
            out_ << std::setw(StreamWidth(width)) << text;
        } else {
            out_ << text;
        }
        return true;
    }

    const MetaList& list_;
    FormatParameters& params_;
    std::ostream& out_;
    std::size_t screenWidth_;
    std::vector<std::string> columns_;
    std::string lastName_;
    std::map<std::string, std::size_t> widths_;
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
        return Table(*list, *structure, params, display, out).Write();
    }
    if (list->GetCount() == 0) {
        return true;
    }
    throw CppToolException("Error: Unable to get structure type from list output.");
}

} // namespace CppTools::AutoCli
