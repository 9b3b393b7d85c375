#pragma once

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <stdexcept>
#include <string>

namespace TestSupport {

/// A parsed XML text that lends out its nodes.
class XmlText {
  public:
    explicit XmlText(const std::string& text)
        : document_(xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, 0),
                    &xmlFreeDoc) {
        if (!document_) {
            throw std::invalid_argument("not well-formed: " + text);
        }
    }

    xmlNode* Root() const { return xmlDocGetRootElement(document_.get()); }

    /// Whatever stands first in the root: an element, a text, a comment.
    xmlNode* FirstChild() const { return Root()->children; }

  private:
    std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document_;
};

} // namespace TestSupport
