/// A property store, or a class derived from it, whose records and flag a test can see.
#pragma once

#include <string>

template <class Store>
struct Open : Store {
    using Store::modified;
    using Store::propertyMap;
    using Store::Store;

    /// The records in the order of their names, as "[index name|value|comment]", then "*" if the
    /// store is modified.
    std::string Dump() const {
        std::string text;
        for (const auto& [name, record] : propertyMap) {
            text += '[' + std::to_string(record->index) + ' ' + name + '|' + record->value + '|' +
                    record->comment + ']';
        }
        return modified ? text + '*' : text;
    }
};
