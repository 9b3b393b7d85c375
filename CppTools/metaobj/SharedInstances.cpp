// The values that everybody shares. They stand in one file because the order in which static
// objects are built is only defined within one: first the instances, then the flags, whose
// initialisation fills them in the order of their definitions at the end.

#include <CppTools/metaobj/MetaBool.h>
#include <CppTools/metaobj/MetaInt.h>
#include <CppTools/metaobj/MetaString.h>

#include <array>

namespace CppTools::MetaObj {

namespace {

constexpr long kSmallestShared = -1;
constexpr long kLargestShared = 20;

struct SharedBools {
    std::shared_ptr<MetaBool> no;
    std::shared_ptr<MetaBool> yes;
};

SharedBools sharedBools;
std::shared_ptr<MetaString> sharedEmptyString;
std::array<std::shared_ptr<MetaInt>, kLargestShared - kSmallestShared + 1> sharedInts;

const std::array<std::string, 6> typeNames = {"Int", "Bool", "String", "Struct", "List", ""};

std::size_t SharedIndex(long value) {
    return static_cast<std::size_t>(value - kSmallestShared);
}

} // namespace

const std::string& MetaTypeString(const MetaType& type) {
    const auto number = static_cast<std::size_t>(type);
    return number < typeNames.size() ? typeNames[number] : typeNames.back();
}

const std::shared_ptr<MetaBool>& MetaBool::New() {
    return sharedBools.no;
}

const std::shared_ptr<MetaBool>& MetaBool::New(bool value) {
    return value ? sharedBools.yes : sharedBools.no;
}

bool MetaBool::Init() {
    if (!sharedBools.no) {
        sharedBools.no = std::make_shared<MetaBool>(false, FactoryFlag{});
        sharedBools.yes = std::make_shared<MetaBool>(true, FactoryFlag{});
    }
    return true;
}

const std::shared_ptr<MetaString>& MetaString::New() {
    return sharedEmptyString;
}

bool MetaString::Init() {
    if (!sharedEmptyString) {
        sharedEmptyString = std::make_shared<MetaString>(std::string(), FactoryFlag{});
    }
    return true;
}

std::shared_ptr<MetaInt> MetaInt::New() {
    return sharedInts[SharedIndex(0)];
}

std::shared_ptr<MetaInt> MetaInt::New(long value) {
    if (value >= kSmallestShared && value <= kLargestShared) {
        return sharedInts[SharedIndex(value)];
    }
    return std::make_shared<MetaInt>(value, FactoryFlag{});
}

bool MetaInt::Init() {
    if (!sharedInts.front()) {
        for (long value = kSmallestShared; value <= kLargestShared; ++value) {
            sharedInts[SharedIndex(value)] = std::make_shared<MetaInt>(value, FactoryFlag{});
        }
    }
    return true;
}

bool MetaBool::_sInitialized = MetaBool::Init();
bool MetaString::_sInitialized = MetaString::Init();
bool MetaInt::_sInitialized = MetaInt::Init();

} // namespace CppTools::MetaObj
