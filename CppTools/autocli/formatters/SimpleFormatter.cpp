#include <CppTools/autocli/formatters/DisplayContext.h>
#include <CppTools/autocli/formatters/FieldText.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/SimpleFormatter.h>
#include <CppTools/autocli/formatters/ValueDispatch.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/host/Pattern.h>

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;

namespace {

std::vector<std::string> FieldList(const MetaStruct& st, const FormatParameters& params) {
    for (const std::string& key : {"fields:" + st.GetTypeName(), std::string("fields")}) {
        if (params.HasParameter(key)) {
            return params.GetParameterAsList(key);
        }
    }
    return st.GetFieldNames();
}

int AlignmentWidth(const std::vector<std::string>& names, const FormatParameters& params) {
    std::size_t width = 0;
    if (params.GetParameter("align-fields") == "true") {
        for (const auto& name : names) {
            width = std::max(width, name.size());
        }
    }
    return static_cast<int>(width);
}

/// The header with the field that its last pair of percent signs names put in.
std::string HeaderText(const MetaStruct& st, const FormatParameters& params) {
    static const Host::Pattern fieldTag(".*%(.+)%.*");
    const std::string key = "header:" + st.GetTypeName();
    if (!params.HasParameter(key)) {
        return st.GetTypeName();
    }
    std::string header = params.GetParameter(key);
    if (const auto groups = fieldTag.GroupsOf(header)) {
        const std::string& name = groups->front();
        if (const auto field = st.GetField(name)) {
            boost::algorithm::replace_all(header, "%" + name + "%", field->ToString());
        }
    }
    return header;
}

template <typename Scalar>
void WriteScalar(const MetaObject& value, std::ostream& out) {
    const auto* scalar = dynamic_cast<const Scalar*>(&value);
    out << (scalar != nullptr ? scalar->ToString() : ConversionFailure(value.GetType())) << '\n';
}

} // namespace

SimpleFormatter::SimpleFormatter() : Formatter("simple") {
    SetDescription("Print a representation of any item to the screen. This can be any type, but "
                   "this formatter excels at printing structs and lists of structs.");
    AddParam("header:<TypeName>",
             "When printing a struct type, prefix the output of the struct with the given text "
             "string and then indent all the struct fields below this text.  The TypeName value "
             "can be determined from the raw or xml output for a command.  For this field a "
             "special variable substitution is available in the value of this format paramter.  "
             "If the value contains a string %<Field>% then this formatter will do token "
             "substitution and replace the value of %<Field>% with the given value of the field "
             "in <TypeName>.  Note this can only be a scalar type (int, bool, string) and must "
             "exactly match one of the fields in the struct <TypeName>.  Example: "
             "'header:ScsiDeviceList' = 'SCSI Device %Device Name%' will result in a header of "
             "'SCSI Device naa.XXXX'.  Note only one %<Field>% tag is supported.  To disable the "
             "display of the header the special value <NONE> can be used");
    AddParam("fields:<TypeName>",
             "When printing a struct use the set of fields given in this parameter.  This allows "
             "the ordering and filtering of the fields printed for a given struct. If no "
             "':<TypeName>' is given then then all structs encounted in the output will attempt "
             "to use these fields.  This provides a reasonable default and compatible output "
             "with other formatters");
    AddParam("units:<TypeName>.<FieldName>",
             "When printing a struct use the given 'units' value as a suffix for a given field.  "
             "For example specifying \"units:ScsiDeviceList:Size\" = \"Mb\" would append the "
             "string 'Mb' to the end of a field");
    AddParam("printf:<TypeName>.<FieldName>",
             "When printing a struct use the given 'printf' formatting string for printing the "
             "value.  This uses standard printf syntax to print a given field.  For example "
             "specifying \"units:ScsiDeviceList.Size\" = \"Mb\" would append the string 'Mb' to "
             "the end of a field");
    AddParam("align-fields",
             "When printing a struct left align all of the fields values so they all start at "
             "the same column");
}

SimpleFormatter::~SimpleFormatter() = default;

bool SimpleFormatter::Format(const std::shared_ptr<CallSpec::Output>& output,
                             FormatParameters& params, DisplayContext& /*display*/,
                             std::ostream& out) {
    const auto root = output->GetRootObject();
    const bool isList = root && root->GetType() == MetaType::List;
    Format(root, params, out, isList ? -1 : 0);
    return true;
}

void SimpleFormatter::Format(std::shared_ptr<MetaObject> value, FormatParameters& params,
                             std::ostream& out, int level) {
    if (!value) {
        return;
    }
    switch (value->GetType()) {
    case MetaType::Bool:
        WriteScalar<MetaObj::MetaBool>(*value, out);
        break;
    case MetaType::Int:
        WriteScalar<MetaObj::MetaInt>(*value, out);
        break;
    case MetaType::String:
        WriteScalar<MetaObj::MetaString>(*value, out);
        break;
    case MetaType::Struct:
        FormatStruct(std::dynamic_pointer_cast<MetaStruct>(value), params, out, level);
        break;
    case MetaType::List:
        FormatList(std::dynamic_pointer_cast<MetaList>(value), params, out, level);
        break;
    }
}

void SimpleFormatter::FormatStruct(std::shared_ptr<MetaStruct> st, FormatParameters& params,
                                   std::ostream& out, int level) {
    if (!st) {
        out << ConversionFailure(MetaType::Struct) << '\n';
        return;
    }
    const std::string indent = GetIndent(level);
    const auto names = FieldList(*st, params);
    const int width = AlignmentWidth(names, params);
    if (const std::string header = HeaderText(*st, params); header != "<NONE>") {
        out << indent << header << ":\n";
    }
    for (const auto& name : names) {
        const auto field = st->GetField(name);
        if (!field) {
            out << "Error getting field " << name << '\n';
            return;
        }
        out << indent << "   " << std::left << std::setw(width) << name << ": ";
        out.unsetf(std::ios_base::adjustfield);
        FormatField(*st, name, field, params, out, level);
    }
}

void SimpleFormatter::FormatField(MetaStruct& st, const std::string& name,
                                  const std::shared_ptr<MetaObject>& field,
                                  FormatParameters& params, std::ostream& out, int level) {
    switch (field->GetType()) {
    case MetaType::Struct:
        out << '\n';
        Format(field, params, out, level + 2);
        break;
    case MetaType::List:
        Format(field, params, out, level + 2);
        break;
    default:
        out << AutoCli_FormatField(st.GetTypeName(), name, field, params) << '\n';
    }
}

void SimpleFormatter::FormatList(std::shared_ptr<MetaList> list, FormatParameters& params,
                                 std::ostream& out, int level) {
    if (!list) {
        out << ConversionFailure(MetaType::List) << '\n';
        return;
    }
    if (list->GetListType() != MetaType::Struct && list->GetListType() != MetaType::List) {
        out << list->ToString() << '\n';
        return;
    }
    for (const auto& element : list->GetObjects()) {
        out << '\n';
        Format(element, params, out, level + 1);
    }
    out << '\n';
}

} // namespace CppTools::AutoCli
