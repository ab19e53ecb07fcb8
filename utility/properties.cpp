#include "utility/properties.h"

#include "utility/exception.h"

namespace mox {

Properties::Property::Property(const std::string& propertyName, const std::string& propertyValue,
                               const std::string& lineComment, unsigned long lineNumber)
    : name(propertyName), value(propertyValue), comment(lineComment), index(lineNumber) {}

void Properties::Clear() {
    propertyMap.clear();
    modified = true;
}

void Properties::PutProperty(const PropertyPtr& record) {
    if (!record) throw Exception("Properties: null record");
    // With this hint, names in sorted order need no search.
    propertyMap.insert_or_assign(propertyMap.end(), record->name, record);
}

void Properties::Put(const std::string& name, const std::string& value) {
    Put(name, value, std::string());
}

void Properties::Put(const std::string& name, const std::string& value,
                     const std::string& comment) {
    const auto found = propertyMap.find(name);
    // An existing record is changed in place: other stores may share it.
    if (found != propertyMap.end()) {
        found->second->value = value;
    } else {
        PutProperty(std::make_shared<Property>(name, value, comment, propertyMap.size() + 1));
    }
    modified = true;
}

void Properties::Delete(const std::string& name) {
    propertyMap.erase(name);
    modified = true;
}

void Properties::Merge(const Properties& other, bool overwrite) {
    // PutProperty shares the record and does not set the flag.
    for (const auto& [name, record] : other.propertyMap) {
        if (overwrite || Get(name).empty()) PutProperty(record);
    }
}

std::string Properties::Get(const std::string& name) const { return Get(name, std::string()); }

std::string Properties::Get(const std::string& name, const std::string& defaultValue) const {
    const auto found = propertyMap.find(name);
    const bool hasValue = found != propertyMap.end() && !found->second->value.empty();
    return hasValue ? found->second->value : defaultValue;
}

}  // namespace mox
