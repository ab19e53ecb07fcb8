// A store of named values: the settings of a reader, typed, defaulted and shared.
#include <cstdio>
#include <memory>

#include "utility/exception.h"
#include "utility/properties.h"

int main() {
    mox::Properties settings;
    settings.Parse(
        "Name = Reader ##2   # a doubled sign is a literal one\n"
        "Vendor = 0x08e6\nBuffer = 64k\nPinpad = yes\nLed = on\n");
    std::printf("%s, %d bytes, pinpad: %d\n", settings.Get("Name").c_str(),
                settings.GetAsInt("Buffer", 0), settings.GetAsBool("Pinpad", false));

    // A missing name is no error, nor is a value that is no number. Numbers are decimal: "0x08e6"
    // reads as 0, with something behind it.
    std::printf("slots: %d, name: %d, vendor: %d\n", settings.GetAsInt("Slots", 1),
                settings.GetAsInt("Name", -1), settings.GetAsInt("Vendor", -1));
    // A word that is neither true nor false is an error.
    try {
        settings.GetAsBool("Led", false);
    } catch (const mox::Exception& failure) {
        std::printf("%s\n", failure.what());
    }

    // Merge shares the records: what is put into one store stands in the other as well.
    mox::Properties defaults;
    defaults.PutProperty(std::make_shared<mox::Properties::Property>("Slots", "4", "", 1));
    settings.Merge(defaults, false);
    settings.Put("Slots", "8");
    std::printf("%s", defaults.GetAsDataFile().c_str());
}
