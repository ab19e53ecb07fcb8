/// A property store, or a class derived from it, whose records and flag a test can see.
#pragma once

#include <string>

template <class Store>
struct Exposed : Store {
    using Store::modified;
    using Store::propertyMap;
    using Store::Store;

    /// The records in the order of their names, as "[index name|value|comment]", then "*" if the
    /// store is modified. Without raw lines the values of placeholders are left out.
    std::string Dump(bool rawLines = true) const {
        std::string text;
        for (const auto& [name, record] : propertyMap) {
            const bool showsValue = rawLines || !name.starts_with('\n');
            text += '[' + std::to_string(record->index) + ' ' + name + '|' +
                    (showsValue ? record->value : "") + '|' + record->comment + ']';
        }
        return modified ? text + '*' : text;
    }
};
