#include <devkit/CommandProbe.h>

#include <CppTools/CppTools.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace Devkit {

namespace {

using CppTools::CppToolException;
using CppTools::AutoCli::ExtensionCommand;
using CppTools::AutoCli::RootNamespace;
using CppTools::AutoCli::XmlPlugin;

constexpr const char* kName = "probe";
constexpr const char* kInputSpec = "input-spec";

/// A file without a name. The engine reads descriptors from files alone.
class MemoryFile {
  public:
    explicit MemoryFile(std::string_view content) : descriptor_(memfd_create(kName, MFD_CLOEXEC)) {
        while (descriptor_ >= 0 && !content.empty()) {
            const ssize_t written = write(descriptor_, content.data(), content.size());
            if (written < 0) {
                break;
            }
            content.remove_prefix(static_cast<std::size_t>(written));
        }
        if (!content.empty()) {
            throw std::system_error(errno, std::generic_category(), "Unable to keep a descriptor");
        }
    }

    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    ~MemoryFile() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }

    std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  private:
    int descriptor_;
};

const xmlChar* ToXml(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

xmlNode& AddElement(xmlNode& parent, const std::string& name, const std::string& text = "") {
    return *xmlNewTextChild(&parent, nullptr, ToXml(name), text.empty() ? nullptr : ToXml(text));
}

void AddCopy(xmlNode& parent, xmlNode& original) {
    xmlAddChild(&parent, xmlDocCopyNode(&original, parent.doc, 1));
}

/// A descriptor that has no command yet, with the entities of another document.
class Descriptor {
  public:
    explicit Descriptor(const xmlDoc& entities) : document_(xmlNewDoc(ToXml("1.0"))) {
        auto* const root = xmlNewDocNode(document_.get(), nullptr, ToXml("descriptor"), nullptr);
        xmlDocSetRootElement(document_.get(), root);
        if (entities.intSubset != nullptr) {
            auto* const subset = reinterpret_cast<xmlNode*>(xmlCopyDtd(entities.intSubset));
            xmlAddPrevSibling(root, subset);
            document_->intSubset = reinterpret_cast<xmlDtd*>(subset);
        }
        AddElement(*root, "version", "1.0.0");
        commands_ = &AddElement(*root, "commands");
    }

    xmlNode& Commands() { return *commands_; }

    std::string ToText() const {
        xmlChar* text = nullptr;
        int size = 0;
        xmlDocDumpMemory(document_.get(), &text, &size);
        const std::unique_ptr<xmlChar, void (*)(void*)> owner(text, xmlFree);
        return {reinterpret_cast<const char*>(text), static_cast<std::size_t>(size)};
    }

  private:
    XmlDocument document_;
    xmlNode* commands_;
};

/// What the engine says to a command, without what it says about the file around it.
std::string Shorten(const std::string& message) {
    static const std::string kMark = std::string("'tandril ") + kName + "'  Error was ";
    const std::size_t found = message.find(kMark);
    return found == message.npos ? message : message.substr(found + kMark.size());
}

Trial Load(const Descriptor& descriptor) {
    const MemoryFile file(descriptor.ToText());
    const auto plugin = XmlPlugin::New(file.Path());
    const auto root = RootNamespace::New(nullptr);
    try {
        plugin->Initialize();
        plugin->RegisterNamespaces(root);
    } catch (const CppToolException& refusal) {
        return {nullptr, Shorten(refusal.what())};
    }
    return {std::dynamic_pointer_cast<ExtensionCommand>(root->GetNamespaceNode(kName)), ""};
}

bool IsInInputSpec(const xmlNode& piece) {
    return NameOf(*piece.parent) == kInputSpec;
}

void AddInputSpec(const std::vector<xmlNode*>& pieces, xmlNode& command) {
    xmlNode& inputSpec = AddElement(command, kInputSpec);
    for (xmlNode* piece : pieces) {
        if (IsInInputSpec(*piece)) {
            AddCopy(inputSpec, *piece);
        }
    }
}

/// Whether a child of the command of that name is among them.
bool Holds(const std::vector<xmlNode*>& pieces, const std::string& name) {
    return std::any_of(pieces.begin(), pieces.end(), [&](xmlNode* piece) {
        return !IsInInputSpec(*piece) && NameOf(*piece) == name;
    });
}

/// The least that stands for a child that a command needs.
void AddStandIn(xmlNode& command, const std::string& name) {
    xmlNode& added = AddElement(command, name, name == "execute" ? "true" : "");
    if (name == "output-spec") {
        AddElement(added, "string");
    }
}

} // namespace

Trial TryCommand(xmlNode& command) {
    Descriptor descriptor(*command.doc);
    AddCopy(descriptor.Commands(), command);
    xmlSetProp(descriptor.Commands().last, ToXml("path"), ToXml(kName));
    return Load(descriptor);
}

std::string CommandProbe::Add(xmlNode& piece) {
    pieces_.push_back(&piece);
    std::string refusal = Try({}).refusal;
    if (!refusal.empty()) {
        pieces_.pop_back();
    }
    return refusal;
}

std::string CommandProbe::RefusalWithout(const std::string& name) const {
    return Try(name).refusal;
}

Trial CommandProbe::Try(const std::string& omitted) const {
    Descriptor descriptor(*command_.doc);
    xmlNode& command = AddElement(descriptor.Commands(), "command");
    xmlSetProp(&command, ToXml("path"), ToXml(kName));
    if (omitted != kInputSpec) {
        AddInputSpec(pieces_, command);
    }
    for (const char* name : {"output-spec", "format-parameters", "execute"}) {
        if (omitted != name && !Holds(pieces_, name)) {
            AddStandIn(command, name);
        }
    }
    for (xmlNode* piece : pieces_) {
        if (!IsInInputSpec(*piece)) {
            AddCopy(command, *piece);
        }
    }
    return Load(descriptor);
}

} // namespace Devkit
