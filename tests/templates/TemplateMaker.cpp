#include "TemplateMaker.h"

#include <CppTools/callspec/InputSpec.h>
#include <CppTools/callspec/Output.h>
#include <tests/support/TemplateChecking.h>

#include <map>
#include <utility>

namespace Templates {

namespace {

using Texts = std::vector<std::string>;

/// Arguments that the checker should accept, most of them.
const Texts kGoodArguments = {"'$val{text}'",
                              "--text='$val{text}'",
                              "-t '$val{text}'",
                              "-- '$val{text}'",
                              "'$val{may-text}'",
                              "a'$val{may-text}'\"b\"",
                              "'a b''$val{may-text}'",
                              "$val{count}",
                              "n=$val{number}",
                              "'$val{number}'",
                              "\"<$val{title}>\"",
                              "'$val{title} x'",
                              "$val{mode}-$val{level}",
                              "$val{optional}",
                              "$val{on}",
                              "$val{may-count}",
                              "$if{flag,--flag}",
                              "$if{flag,'a b' c}",
                              "$if{may-count,-c $val{may-count}}",
                              "$if{may-text,-t '$val{may-text}'}",
                              "$if{text,'$val{text}'}",
                              "$if{ports,$multilist{ports,-p,false}}",
                              "$list{ports,',',false}",
                              "'$list{tags,',',false}'",
                              "$list{tags,',',false}",
                              "$list{titles,':',true}",
                              "\"$list{titles,',',false}\"",
                              "$multilist{titles,-t,true}",
                              "$multilist{tags,--tag,false}",
                              "plain",
                              "'#;|&'",
                              "\"* ? ~\"",
                              ">/dev/null",
                              "2>&1",
                              "</dev/null",
                              ">> out"};

/// What an author may have thought of as well.
const Texts kBadArguments = {"$val{text}",
                             "\"$val{text}\"",
                             "'x$val{text}'",
                             "' $val{text}'",
                             "'a'$val{text}'b'",
                             "$list{texts,',',true}",
                             "'$list{texts,',',false}'",
                             "$multilist{texts,-t,true}",
                             "'$val{text}$val{may-text}'",
                             "$(args '$val{text}')",
                             "`$val{count}`",
                             "\\$val{count}",
                             "$'$val{text}'",
                             "$\"$val{text}\"",
                             "{a,$val{count}}",
                             "~$val{mode}",
                             "=$val{mode}",
                             "# '$val{text}'",
                             "<<END\n$val{text}\nEND",
                             "$((1+$val{number}))",
                             "$val{tex$if{flag,t}}",
                             "$v$if{flag,al}{text}",
                             "$if{flag,'}$val{text}'",
                             "$if{flag,$val{text}}",
                             "[ $val{count} ]",
                             "*$val{count}",
                             ">'$val{text}'",
                             "$val{count}>out",
                             "2>&$val{count}",
                             "'",
                             "\"",
                             "\\",
                             "`",
                             "$",
                             "{",
                             "}",
                             "(",
                             ")",
                             "&",
                             "$if{flag,",
                             "$list{tags,';',false}",
                             "$multilist{tags,;,false}",
                             "$list{titles,',',false}",
                             "$if{tags,$list{tags,',',false} x}",
                             "$HOME",
                             "${text}",
                             "!",
                             "#"};

const Texts kCommands = {"printf '%s'", "echo", "cat", "true"};

const Texts kPrefixes = {"nice ", "env A=b ", "timeout 9 ", "exec "};

const Texts kBadCommands = {
    "sh -c",  "eval",  "$val{mode}",        "A='$val{text}'", "if",   "case",
    "{",      "xargs", "nice -$val{count}", "printf",         "read", "f()",
    "! true", "exec"};

const Texts kJoints = {" ", " ", " ", " ", " ", " ", "  ", "\t", " \\\n", "\\\n", ""};

const Texts kOperators = {"; ", " && ", " || ", " | ", "\n", ";", "&&", "|"};

/// What free text is made of.
const Texts kAttacks = {
    "canary", ";",       "'",        "\"",         "`",        "$(",          ")",          "\\",
    "\n",     " ",       "\t",       "#",          "&",        "|",           "<",          ">",
    "*",      "?",       "[",        "]",          "~",        "=",           "!",          "{",
    "}",      "$",       "-",        "--",         ",",        "$va",         "l{",         "$i",
    "f{",     "$val",    "{text}",   "{may-text}", "{count}",  ",x}",         "$lis",       "t{",
    "true}",  ",false}", "',false}", "$'",         "a",        "%s",          "\x01",       "\xFE",
    "\xFF",   "0",       "\r",       "\v",         "\xC2\xA0", "$val{count}", "$if{flag,x}"};

const std::map<std::string, Texts> kAllowed = {
    {"count", {"1", "9", "+5", "007", " 1", "\n2"}},
    {"flag", {""}},
    {"level", {"1", "2", "+1"}},
    {"may-count", {"3", "+4"}},
    {"mode", {"slow", "fast"}},
    {"number", {"-1", "0", "\t3", "\v4", "+7", "-9223372036854775808"}},
    {"on", {"true", "0", "yes", "F"}},
    {"option", {"-a", "-b"}},
    {"optional", {"", "yes"}},
    {"ports", {"1", "+2", "9", "  4"}},
    {"sign", {"-0", "4"}},
    {"step", {"0", "-0", "1"}},
    {"switches", {"1", "n"}},
    {"tags", {"a", "canary", "z"}},
    {"title", {" ", "a b", "canary", "  x  "}},
    {"titles", {" ", "a b", "canary"}}};

} // namespace

TemplateMaker::TemplateMaker(std::uint64_t seed, std::string program)
    : random_(seed), program_(std::move(program)), spec_(TestSupport::NewCheckSpec()) {}

std::string TemplateMaker::Template() {
    std::string text = Command();
    while (random_.Chance(30)) {
        text += random_.Pick(kOperators) + Command();
    }
    return text;
}

std::string TemplateMaker::Command() {
    std::string text = program_;
    if (random_.Chance(20)) {
        text = random_.Chance(50) ? random_.Pick(kCommands) : random_.Pick(kPrefixes) + program_;
    }
    if (random_.Chance(4)) {
        text = random_.Pick(kBadCommands);
    }
    for (std::size_t count = random_.Below(5); count > 0; --count) {
        text += random_.Pick(kJoints) + Argument();
    }
    return text;
}

std::string TemplateMaker::Argument() {
    return random_.Pick(random_.Chance(12) ? kBadArguments : kGoodArguments);
}

TestSupport::GivenParameters TemplateMaker::Values(const std::string& text) {
    TestSupport::GivenParameters given;
    for (const auto& parameter : spec_->GetParameters()) {
        const bool isNamed = text.find("{" + parameter->GetName()) != text.npos;
        const bool isMissing =
            isNamed ? !parameter->IsRequired() && random_.Chance(50) : random_.Chance(80);
        std::size_t count = isMissing ? 0 : 1;
        count += count > 0 && parameter->AllowMultiple() ? random_.Below(3) : 0;
        for (; count > 0; --count) {
            given.emplace_back(parameter->GetName(), ValueOf(parameter->GetName()));
        }
    }
    return given;
}

std::string TemplateMaker::ValueOf(const std::string& parameter) {
    const auto allowed = kAllowed.find(parameter);
    return allowed == kAllowed.end() ? AttackText() : random_.Pick(allowed->second);
}

std::string TemplateMaker::AttackText() {
    std::string text;
    for (std::size_t count = random_.Below(6); count > 0; --count) {
        text += random_.Pick(kAttacks);
    }
    return text;
}

} // namespace Templates
