#include <CppTools/autocli/CommandSpec.h>
#include <CppTools/autocli/plugins/XmlDescriptor.h>
#include <CppTools/autocli/plugins/XmlElements.h>
#include <CppTools/autocli/plugins/XmlUtil.h>
#include <CppTools/callspec/ValueReading.h>
#include <CppTools/metaobj/CppToolException.h>

#include <algorithm>
#include <array>

namespace CppTools::AutoCli {

using CallSpec::ParameterConstraint;
using CallSpec::ParameterConstraintType;
using CallSpec::ParameterSpec;
using CallSpec::ParameterType;

namespace {

ParameterType ReadParameterType(const std::string& word, const std::string& name) {
    static constexpr std::array<std::pair<std::string_view, ParameterType>, 7> kTypes = {
        {{"string", ParameterType::String},
         {"int", ParameterType::Int},
         {"bool", ParameterType::Bool},
         {"flag", ParameterType::Flag},
         {"string-list", ParameterType::StringList},
         {"int-list", ParameterType::IntList},
         {"bool-list", ParameterType::BoolList}}};
    for (const auto& [typeWord, type] : kTypes) {
        if (typeWord == word) {
            return type;
        }
    }
    throw CppToolException(
        "Unable to parse Input Parameter " + name +
        ". Missing or invalid required attribute: 'type'.  Must be one of [string, string-list, "
        "bool, bool-list, int, int-list]");
}

bool IsTrueOrFalse(const std::string& word) {
    return word == "true" || word == "false";
}

/// An absent or empty attribute means false.
bool ReadRequired(_xmlNode* element, const std::string& name) {
    const std::string word = AttributeOf(element, "required");
    if (!word.empty() && !IsTrueOrFalse(word)) {
        throw CppToolException("Unable to parse Input Paramter " + name +
                               ". Missing or invalid 'required', must be one of ['true', 'false']");
    }
    return word == "true";
}

std::string ReadParameterDescription(_xmlNode* element, const std::string& name) {
    std::string description = XmlUtil_GetContentForChildByTag(element, "description");
    if (description.empty()) {
        throw CppToolException("Unable to parse Input Paramter " + name +
                               ". Missing command description");
    }
    return description;
}

bool ReadSecret(_xmlNode* element, const std::string& name, const std::string& type) {
    const std::string word = AttributeOf(element, "secret");
    if (!word.empty() && !IsTrueOrFalse(word)) {
        throw CppToolException("Unable to parse Input Paramter " + name +
                               ". Invalid 'secret', must be one of ['true', 'false']");
    }
    if (word == "true" && type != "string") {
        throw CppToolException("Unable to parse Input Paramter " + name + ". Invalid type " + type +
                               " for secret, must be 'string'");
    }
    return word == "true";
}

void AddConstraint(_xmlNode* element, ParameterSpec& parameter) {
    try {
        parameter.SetConstraint(ExtractParamConstraint(element));
    } catch (const CppToolException& failure) {
        throw CppToolException("Unable to build parameter constraint for parameter " +
                               parameter.GetName() + ".  Error was: " + failure.what());
    }
}

/// Builds the constraint of an enum, regex or range element; empty when it holds no data.
using ConstraintBuilder = std::shared_ptr<ParameterConstraint> (*)(_xmlNode*);

std::shared_ptr<ParameterConstraint> BuildStringEnum(_xmlNode* element) {
    auto entries = ExtractEnum(element);
    auto constraint = ParameterConstraint::New(ParameterConstraintType::StringEnum);
    for (auto& [value, description] : entries) {
        constraint->AddStringEnum(std::move(value), std::move(description));
    }
    return entries.empty() ? nullptr : constraint;
}

std::shared_ptr<ParameterConstraint> BuildIntEnum(_xmlNode* element) {
    const auto entries = ExtractEnum(element);
    auto constraint = ParameterConstraint::New(ParameterConstraintType::IntEnum);
    for (const auto& [value, description] : entries) {
        long number = 0;
        if (!CallSpec::ReadLeadingInteger(value, number)) {
            throw CppToolException("Error parsing integer enumeration. Expected integer, but got " +
                                   value);
        }
        constraint->AddIntEnum(number);
    }
    return entries.empty() ? nullptr : constraint;
}

std::shared_ptr<ParameterConstraint> BuildRegex(_xmlNode* element) {
    std::string expression = XmlUtil_GetContent(element);
    if (expression.empty()) {
        throw CppToolException(
            "Error parsing regex from parameter constraint.Missing or empty 'regex' tag");
    }
    auto constraint = ParameterConstraint::New(ParameterConstraintType::StringRegex);
    constraint->SetStringRegex(std::move(expression));
    return constraint;
}

std::shared_ptr<ParameterConstraint> BuildRange(_xmlNode* element) {
    const std::string minText = AttributeOf(element, "min");
    const std::string maxText = AttributeOf(element, "max");
    long min = 0;
    long max = 0;
    if (!CallSpec::ReadLeadingInteger(minText, min) ||
        !CallSpec::ReadLeadingInteger(maxText, max)) {
        throw CppToolException("Error parsing 'range' parameter constraint.  Range requires both "
                               "'min' and 'max' attributes and that both are integers.");
    }
    auto constraint = ParameterConstraint::New(ParameterConstraintType::IntRange);
    constraint->SetIntRange(min, max);
    return constraint;
}

struct ConstraintKind {
    std::string_view type;
    std::string_view child;
    ConstraintBuilder build;
};

const ConstraintKind& FindConstraintKind(const std::string& type) {
    static constexpr std::array<ConstraintKind, 4> kKinds = {{
        {"stringenum", "enum", BuildStringEnum},
        {"intenum", "enum", BuildIntEnum},
        {"regex", "regex", BuildRegex},
        {"range", "range", BuildRange},
    }};
    const auto* const found = std::find_if(kKinds.begin(), kKinds.end(),
                                           [&](const auto& kind) { return kind.type == type; });
    if (found == kKinds.end()) {
        throw CppToolException("Missing or invalid constraint 'type', must be one of [stringenum, "
                               "intenum, regex, range] got '" +
                               type + "'");
    }
    return *found;
}

} // namespace

std::shared_ptr<CallSpec::InputSpec> ExtractInputSpec(_xmlNode* element) {
    auto inputSpec = CallSpec::InputSpec::New();
    ForEachElement(*element, [&](_xmlNode* child) {
        if (NodeName(*child) == "parameter") {
            inputSpec->AddParameter(ExtractInputParam(child));
        } else if (NodeName(*child) == "context-supported") {
            inputSpec->SetContextSupported(XmlUtil_GetContent(child));
        }
    });
    return inputSpec;
}

std::shared_ptr<ParameterSpec> ExtractInputParam(_xmlNode* element) {
    const std::string name = AttributeOf(element, "name");
    if (name.empty()) {
        throw CppToolException(
            "Unable to parse Input Parameter.  Missing required attribute: 'name'");
    }
    const std::string typeWord = AttributeOf(element, "type");
    const ParameterType type = ReadParameterType(typeWord, name);
    const bool required = ReadRequired(element, name);
    std::string description = ReadParameterDescription(element, name);
    const bool secret = ReadSecret(element, name, typeWord);

    auto parameter = ParameterSpec::New(name, type);
    if (const std::string shortName = AttributeOf(element, "shortname"); !shortName.empty()) {
        parameter->SetShortName(shortName);
    }
    parameter->SetDescription(std::move(description));
    parameter->SetRequired(required);
    if (secret) {
        parameter->SetSecret(true);
    }
    ForEachElementNamed(*element, "constraint",
                        [&](_xmlNode* child) { AddConstraint(child, *parameter); });
    return parameter;
}

std::shared_ptr<ParameterConstraint> ExtractParamConstraint(_xmlNode* element) {
    const auto& kind = FindConstraintKind(AttributeOf(element, "type"));
    std::shared_ptr<ParameterConstraint> constraint;
    ForEachElementNamed(*element, kind.child,
                        [&](_xmlNode* child) { constraint = kind.build(child); });
    if (!constraint) {
        throw CppToolException("Error parsing parameter constraint.  There was no data included "
                               "inside the <constraint> tag for the given constraint type");
    }
    return constraint;
}

std::vector<std::pair<std::string, std::string>> ExtractEnum(_xmlNode* element) {
    std::vector<std::pair<std::string, std::string>> entries;
    ForEachElement(*element, [&](_xmlNode* child) {
        if (NodeName(*child) != "enum-value") {
            throw CppToolException(
                "Found unexpected tag while building an enum.  Unexpected tag was: " +
                std::string(NodeName(*child)));
        }
        const std::string value = AttributeOf(child, "value");
        if (value.empty()) {
            throw CppToolException(
                "Error parsing 'enum-value', missing required attribute 'value'");
        }
        ForEachContent(*child, [&](const char* text) { entries.emplace_back(value, text); });
    });
    return entries;
}

std::shared_ptr<CallSpec::OutputSpec> ExtractOutputSpec(_xmlNode* element) {
    auto outputSpec = CallSpec::OutputSpec::New();
    ForEachElement(*element, [&](_xmlNode* child) {
        if (outputSpec->GetRootObject()) {
            throw CppToolException("Found more than one node under 'output-spec', where only one "
                                   "node is supported.  The tag was " +
                                   std::string(NodeName(*child)));
        }
        try {
            outputSpec->SetRootObject(XmlUtil_BuildMetaObject(child));
        } catch (const CppToolException& failure) {
            throw CppToolException(std::string("Unable to build output spec.  Error was ") +
                                   failure.what());
        }
    });
    return outputSpec;
}

void ExtractFormatParams(_xmlNode* element, CommandSpec& command) {
    bool hasFormatter = false;
    ForEachElement(*element, [&](_xmlNode* child) {
        if (NodeName(*child) == "formatter") {
            if (std::exchange(hasFormatter, true)) {
                throw CppToolException("Invalid plugin format.  Duplicate <formatter> tags found");
            }
            command.SetDefaultOutputFormatter(XmlUtil_GetContent(child));
        } else if (NodeName(*child) == "format-parameter") {
            command.SetDefaultOutputParameter(AttributeOf(child, "name"),
                                              XmlUtil_GetContent(child));
        }
    });
}

void ExtractMetaData(_xmlNode* element) {
    ForEachElement(*element, [](_xmlNode* child) {
        if (NodeName(*child) != "meta-data-entry") {
            throw CppToolException(
                "Found unexpected tag while building meta-data set.  Unexpected tag was: " +
                std::string(NodeName(*child)));
        }
        const bool hasName = !AttributeOf(child, "name").empty();
        ForEachContent(*child, [&](const char* /*text*/) {
            if (!hasName) {
                throw CppToolException(
                    "Error parsing 'meta-data-entry', missing required attribute 'name'");
            }
        });
    });
}

} // namespace CppTools::AutoCli
