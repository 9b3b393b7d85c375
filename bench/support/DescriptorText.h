#pragma once

/// A descriptor of commands with four parameters, like those of data/descriptors.py.

#include <string>

namespace Bench {

inline std::string DescriptorText(long commands) {
    std::string text = R"(<?xml version="1.0"?>
<plugin><version>1.0.0</version>
<namespaces><namespace path="ns0000"><description>A namespace</description></namespace></namespaces>
<commands>)";
    for (long i = 0; i < commands; ++i) {
        text += "<command path=\"ns0000.cmd" + std::to_string(i) + R"("><description>Does one thing
</description><input-spec>
<parameter name="name" type="string" required="true" shortname="n"><description>Name of the object
</description><constraint type="regex"><regex>[a-z][a-z0-9-]*</regex></constraint></parameter>
<parameter name="size" type="int"><description>Size in megabytes</description>
<constraint type="range"><range min="1" max="65536"/></constraint></parameter>
<parameter name="mode" type="string"><description>Mode, one of %ENUM%</description>
<constraint type="stringenum"><enum><enum-value value="fast">Less checking</enum-value>
<enum-value value="safe">All checks</enum-value></enum></constraint></parameter>
<parameter name="force" type="flag"><description>Do not ask</description></parameter>
</input-spec><output-spec><list type="structure"><structure typeName="Row"><field name="Id"><int/>
</field><field name="Name"><string/></field></structure></list></output-spec>
<format-parameters><formatter>table</formatter></format-parameters>
<execute>/bin/cat /dev/null $val{name} $if{force,--force}</execute></command>
)";
    }
    return text + "</commands></plugin>\n";
}

} // namespace Bench
