/// A store, or a class derived from it, with its protected members exposed to tests.
#pragma once

#include <string>
#include <tuple>
#include <vector>

/// The index, name, value and comment of each record, in the order of the names.
using Records = std::vector<std::tuple<unsigned long, std::string, std::string, std::string>>;

template <class Store>
struct Exposed : Store {
    using Store::modified;
    using Store::propertyMap;
    using Store::Store;

    Records GetRecords() const {
        Records records;
        for (const auto& [name, record] : propertyMap)
            records.emplace_back(record->index, name, record->value, record->comment);
        return records;
    }
};
