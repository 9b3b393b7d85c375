#include <devkit/XmlErrors.h>

#include <algorithm>

namespace Devkit {

namespace {

int DepthOf(const xmlNode* node) {
    int depth = 0;
    for (; node != nullptr; node = node->parent) {
        ++depth;
    }
    return depth;
}

} // namespace

void CollectError(void* problems, XmlErrorPointer error) {
    auto& all = *static_cast<std::vector<XmlProblem>*>(problems);
    const auto* const node = static_cast<const xmlNode*>(error->node);
    XmlProblem problem{node != nullptr ? LineOf(*node) : error->line, error->int2, DepthOf(node),
                       error->message};
    while (problem.text.ends_with('\n')) {
        problem.text.pop_back();
    }
    const bool isKnown = std::any_of(all.begin(), all.end(), [&](const XmlProblem& other) {
        return other.line == problem.line && other.text == problem.text;
    });
    if (!isKnown) {
        all.push_back(std::move(problem));
    }
}

} // namespace Devkit
