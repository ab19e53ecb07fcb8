/// mox::Properties: an in-memory store of named text properties.
///
/// The store maps each name to a record that holds the value, the comment that stood beside it and
/// the place of its line in the text form. Records are reference-counted and can be shared between
/// stores: a change made to a record through one store is seen in every store that holds it. A
/// store and the records that it shares are used by one thread at a time.
///
/// Names are compared as bytes, so they are case-sensitive, and entries stand in ascending byte
/// order of their names. A missing name is never an error. Every operation that allocates can throw
/// std::bad_alloc, and then leaves the store consistent.
///
///     mox::Properties settings;
///     settings.Parse("Limit = 10k  # bytes\nVerbose = yes\n");
///     settings.GetAsInt("Limit", 0);         // 10240
///     settings.GetAsBool("Verbose", false);  // true
///     settings.Get("Path", "/tmp");          // "/tmp"
#pragma once

#include <map>
#include <memory>
#include <string>

namespace mox {

class Properties {
public:
    /// One property: a plain record.
    ///
    /// A record whose name begins with a line feed is a placeholder for a line of the text form
    /// that carries no property (blank, or a comment alone): its name is the line feed and the line
    /// number in decimal, its value the line as it was read. In the store it is an entry like any
    /// other.
    struct Property {
        /// Copies all four.
        Property(const std::string& propertyName, const std::string& propertyValue,
                 const std::string& lineComment, unsigned long lineNumber);

        std::string name;     ///< the name under which the store holds the record
        std::string value;    ///< the value, without any escaping
        std::string comment;  ///< what followed the "#" of its line, untrimmed; often empty
        unsigned long index;  ///< the number of its line in the text form, from 1
    };

    /// How stores hold and share their records.
    using PropertyPtr = std::shared_ptr<Property>;

    /// An empty, unmodified store.
    Properties() = default;

    // Stores are merged, not copied: an assignment could reset the modified flag of a FileConfig,
    // whose changes would then not be written back.
    Properties(const Properties&) = delete;
    Properties& operator=(const Properties&) = delete;

    /// Throws nothing itself; a derived class may.
    virtual ~Properties() noexcept(false) = default;

    /// Removes every entry. Marks the store modified, also when it was empty.
    void Clear();

    /// Stores the given record itself, unchanged, under its own name, in place of any entry of that
    /// name. Does not mark the store modified. Throws mox::Exception, with nothing stored, when the
    /// record is null.
    void PutProperty(const PropertyPtr& record);

    /// Gives the property of this name the value. An existing record is changed in place and keeps
    /// its comment and its index; a new one gets an empty comment and, as its index, the number of
    /// entries that there are with it. Marks the store modified.
    void Put(const std::string& name, const std::string& value);

    /// The same, save that a new record gets the comment; an existing one still keeps its own.
    void Put(const std::string& name, const std::string& value, const std::string& comment);

    /// Removes the entry of this name, if any. Marks the store modified in any case.
    void Delete(const std::string& name);

    /// Takes over the entries of other, sharing their records, which keep their index. Where this
    /// store has a non-empty value of the same name, that stays unless overwrite is true. Does not
    /// mark the store modified.
    void Merge(const Properties& other, bool overwrite);

    /// A copy of the value of this name; empty when there is none.
    std::string Get(const std::string& name) const;

    /// The same, with defaultValue in place of a missing or empty value.
    std::string Get(const std::string& name, const std::string& defaultValue) const;

    /// The value of this name as a number; defaultValue where it is missing or empty, where it does
    /// not begin with a number, and where that number does not fit the result type.
    ///
    /// A number is decimal: digits, which white space and a sign may precede; the unsigned readings
    /// refuse a minus sign. A size suffix at the end of the value (k, m or g, which a b may follow,
    /// in either case) multiplies it by 1024, 1024^2 or 1024^3; a product that does not fit the
    /// result type wraps in two's complement. What stands between the number and the suffix is
    /// ignored: "1.5k" is 1024 and "12abc" is 12. No locale is consulted, and "0x" is no prefix:
    /// "0x10" is 0.
    int GetAsInt(const std::string& name, int defaultValue) const;

    /// The same, unsigned.
    unsigned int GetAsUInt(const std::string& name, unsigned int defaultValue) const;

    /// The same, unsigned and in 64 bits.
    unsigned long GetAsULong(const std::string& name, unsigned long defaultValue) const;

    /// True for "TRUE", "true", "1" and "yes", false for "FALSE", "false", "0" and "no", and
    /// defaultValue where the value of this name is missing or empty. Any other value, these words
    /// with blanks around them included, throws mox::Exception, "Bad value for boolean option \"" +
    /// value + "\"".
    bool GetAsBool(const std::string& name, bool defaultValue) const;

    /// Replaces the entries by those of a configuration text and marks the store modified.
    ///
    /// The lines have the syntax of a configuration file (see FileConfig), but are of any length
    /// and may hold NUL bytes. Carriage returns are removed wherever they stand. Lines that are
    /// then empty make no record and are not counted; of blank ones and comments the placeholder's
    /// value is the line without its line end. Where a name stands on two lines, the later one
    /// wins. A malformed line throws mox::Exception, "Properties: wrong data in config data " +
    /// " in line " + its number, with the store holding the lines before it; a FileConfig writes
    /// these back like any others.
    void Parse(const std::string& data);

    /// The entries in the order of their names, each as name, "=", value and a line feed.
    /// Placeholders are no exception, comments are left out and "#" is not escaped: Parse does not
    /// always read the text back into the same entries.
    std::string GetAsDataFile() const;

    /// Escapes "#", of which a single one starts a comment in the text form: doubles every "#" of
    /// the text, in place. For a text without carriage returns, Preunmask and then Unmask undo it.
    static void Mask(std::string& text);

    /// The first step of reading a line: turns every pair "##", taken from the left, into a
    /// carriage return, in place. The first "#" that is left, if any, is the comment marker.
    static void Preunmask(std::string& text);

    /// The second step, on what stands before and after the marker: turns every carriage return
    /// into "#", in place.
    static void Unmask(std::string& text);

protected:
    /// The entries. Every pointer is non-null, and every key equals its record's name.
    std::map<std::string, PropertyPtr> propertyMap;

    /// True once Put, Delete, Clear or Parse was called; only a derived class ever clears it.
    bool modified = false;
};

}  // namespace mox
