#include <CppTools/autocli/formatters/FieldPlan.h>
#include <CppTools/autocli/formatters/FormatParameters.h>
#include <CppTools/autocli/formatters/SimpleFormatter.h>
#include <CppTools/autocli/formatters/TextBuffer.h>
#include <CppTools/autocli/formatters/ValueDispatch.h>
#include <CppTools/callspec/Output.h>
#include <CppTools/host/Pattern.h>
#include <CppTools/metaobj/PlainText.h>

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <map>
#include <ostream>

namespace CppTools::AutoCli {

using MetaObj::MetaList;
using MetaObj::MetaObject;
using MetaObj::MetaStruct;
using MetaObj::MetaType;
using MetaObj::StructFields;

namespace {

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
        if (const auto* field = StructFields(st).Find(name)) {
            boost::algorithm::replace_all(header, "%" + name + "%", MetaObj::PlainText(*field));
        }
    }
    return header;
}

FieldPlan NewPlan(const std::string& typeName, const FormatParameters& params) {
    for (const std::string& key : {"fields:" + typeName, std::string("fields")}) {
        if (params.HasParameter(key)) {
            return {typeName, params.GetParameterAsList(key), params};
        }
    }
    return {typeName, params};
}

/// Writes values as lines and indented blocks.
class SimpleWriter {
  public:
    SimpleWriter(const FormatParameters& params, std::ostream& out)
        : params_(params), stream_(out), out_(out), fill_(out.fill()),
          isAligned_(params.GetParameter("align-fields") == "true") {}

    void Write(bool value, int /*level*/) { out_ << value << '\n'; }

    void Write(long value, int /*level*/) { out_ << value << '\n'; }

    void Write(std::string_view text, int /*level*/) { out_ << text << '\n'; }

    void Write(const MetaStruct& st, int level) {
        FieldPlan& plan = PlanOf(st);
        if (const std::string header = HeaderText(st, params_); header != "<NONE>") {
            out_.Indent(level) << header << ":\n";
        }
        const StructFields fields(st);
        const std::size_t width = isAligned_ ? WidestName(plan, fields) : 0;
        // The plan is asked again for each field: a structure of the same type may be in one.
        for (std::size_t i = 0; i < plan.For(fields.GetShape()).size(); ++i) {
            const auto& field = plan.For(fields.GetShape())[i];
            const auto* value = fields.AtSlot(field.slot);
            if (value != nullptr) {
                WriteField(field, *value, width, level);
            } else if (plan.IsChosen()) {
                out_ << "Error getting field " << field.name << '\n';
                return;
            }
        }
    }

    void Write(const MetaList& list, int level) {
        if (list.GetListType() != MetaType::Struct && list.GetListType() != MetaType::List) {
            out_ << list.ToString() << '\n';
            return;
        }
        for (const auto& element : list.GetObjects()) {
            out_ << '\n';
            Dispatch(*element, *this, level + 1);
        }
        out_ << '\n';
    }

    /// Hands over what is written, and throws what the stream does.
    void Finish() { out_.Flush(); }

    void WriteFailure(MetaType kind) { out_ << ConversionFailure(kind) << '\n'; }

    void WriteUnknown() {}

  private:
    FieldPlan& PlanOf(const MetaStruct& st) {
        const std::string& typeName = st.GetTypeName();
        const auto found = plans_.find(typeName);
        return found != plans_.end()
                   ? found->second
                   : plans_.try_emplace(typeName, NewPlan(typeName, params_)).first->second;
    }

    static std::size_t WidestName(FieldPlan& plan, const StructFields& fields) {
        std::size_t width = 0;
        for (const auto& field : plan.For(fields.GetShape())) {
            if (plan.IsChosen() || fields.AtSlot(field.slot) != nullptr) {
                width = std::max(width, field.name.size());
            }
        }
        return width;
    }

    void WriteField(const FieldPlan::Field& field, const MetaObj::FieldValue& value,
                    std::size_t width, int level) {
        out_.Indent(level) << "   " << field.name;
        out_.Fill(width - std::min(width, field.name.size()), fill_) << ": ";
        stream_.unsetf(std::ios_base::adjustfield);
        switch (value.GetType()) {
        case MetaType::Struct:
            out_ << '\n';
            Dispatch(value, *this, level + 2);
            break;
        case MetaType::List:
            Dispatch(value, *this, level + 2);
            break;
        default:
            field.format.Write(value, out_);
            out_ << '\n';
        }
    }

    const FormatParameters& params_;
    std::ostream& stream_;
    TextBuffer out_;
    char fill_;
    bool isAligned_;
    std::map<std::string, FieldPlan> plans_; ///< By the names of the types.
};

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
    if (value) {
        SimpleWriter writer(params, out);
        Dispatch(*value, writer, level);
        writer.Finish();
    }
}

void SimpleFormatter::FormatStruct(std::shared_ptr<MetaStruct> st, FormatParameters& params,
                                   std::ostream& out, int level) {
    SimpleWriter writer(params, out);
    if (st) {
        writer.Write(*st, level);
    } else {
        writer.WriteFailure(MetaType::Struct);
    }
    writer.Finish();
}

void SimpleFormatter::FormatList(std::shared_ptr<MetaList> list, FormatParameters& params,
                                 std::ostream& out, int level) {
    SimpleWriter writer(params, out);
    if (list) {
        writer.Write(*list, level);
    } else {
        writer.WriteFailure(MetaType::List);
    }
    writer.Finish();
}

} // namespace CppTools::AutoCli
