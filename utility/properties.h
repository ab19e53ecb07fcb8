/// mox::Properties: an in-memory store of named text properties.
///
/// The store maps each name to a record that holds the value, the comment on its line and the
/// line's number. Records are reference-counted and can be shared between stores: a change made to
/// a record through one store is seen in every store that holds it. Not thread-safe, including
/// across stores that share records.
///
/// Names are compared as bytes, so they are case-sensitive, and entries are in ascending byte order
/// of their names. A missing name is never an error. Every operation that allocates can throw
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
    /// A record whose name begins with a newline is a placeholder for a line of the text form
    /// without a property (blank, or only a comment): its name is the newline and the line number
    /// in decimal, its value the line as it was read. In the store it is an entry like any other.
    struct Property {
        /// Copies all four.
        Property(const std::string& propertyName, const std::string& propertyValue,
                 const std::string& lineComment, unsigned long lineNumber);

        std::string name;     ///< the name under which the store holds the record
        std::string value;    ///< the value, without any escaping
        std::string comment;  ///< what followed the "#" of its line, untrimmed; often empty
        unsigned long index;  ///< the number of its line in the text form, from 1
    };

    /// Shared ownership of a record.
    using PropertyPtr = std::shared_ptr<Property>;

    /// An empty, unmodified store.
    Properties() = default;

    // Not copyable (see Merge): assignment could reset the modified flag, and a FileConfig would
    // not be written back.
    Properties(const Properties&) = delete;
    Properties& operator=(const Properties&) = delete;

    /// May throw only in a derived class.
    virtual ~Properties() noexcept(false) = default;

    /// Removes every entry and sets the modified flag, even if the store was empty.
    void Clear();

    /// Stores the record itself, not a copy, replacing any entry of its name. Does not set the
    /// modified flag. Throws mox::Exception, with nothing stored, if record is null.
    void PutProperty(const PropertyPtr& record);

    /// Sets the value of a property and the modified flag. An existing record is changed in place
    /// and keeps its comment and index; a new one gets an empty comment and the new number of
    /// entries as its index.
    void Put(const std::string& name, const std::string& value);

    /// The same, but a new record gets comment.
    void Put(const std::string& name, const std::string& value, const std::string& comment);

    /// Removes the entry of this name, if any. Always sets the modified flag.
    void Delete(const std::string& name);

    /// Adds the entries of other, sharing their records, which keep their index. Non-empty values
    /// of this store are kept unless overwrite is true. Does not set the modified flag.
    void Merge(const Properties& other, bool overwrite);

    /// Returns a copy of the value of this name; empty if there is none.
    std::string Get(const std::string& name) const;

    /// The same, but returns defaultValue for a missing or empty value.
    std::string Get(const std::string& name, const std::string& defaultValue) const;

    /// Returns the value of this name as a number; defaultValue if it is missing or empty, does not
    /// begin with a number, or the number does not fit the result type.
    ///
    /// A number is decimal: digits, after optional white space and sign; the unsigned functions
    /// reject a minus sign. A size suffix at the end of the value (k, m or g, optionally followed
    /// by b, in either case) multiplies it by 1024, 1024^2 or 1024^3; a product that does not fit
    /// the result type wraps in two's complement. Anything between number and suffix is ignored:
    /// "1.5k" is 1024 and "12abc" is 12. No locale is consulted, and "0x" is not a prefix: "0x10"
    /// is 0.
    int GetAsInt(const std::string& name, int defaultValue) const;

    /// The same, unsigned.
    unsigned int GetAsUInt(const std::string& name, unsigned int defaultValue) const;

    /// The same, unsigned and in 64 bits.
    unsigned long GetAsULong(const std::string& name, unsigned long defaultValue) const;

    /// True for "TRUE", "true", "1" and "yes"; false for "FALSE", "false", "0" and "no";
    /// defaultValue if the value is missing or empty. Any other value, including these words with
    /// spaces around them, throws mox::Exception, "Bad value for boolean option \"" + value + "\"".
    bool GetAsBool(const std::string& name, bool defaultValue) const;

    /// Replaces the entries by those of a configuration text and sets the modified flag.
    ///
    /// The lines have the syntax of a configuration file (see FileConfig), but can be of any length
    /// and contain NUL bytes. All carriage returns are removed. Lines that are then empty are
    /// skipped and not counted; a placeholder's value is its line without the newline. The last
    /// line with a name wins. A malformed line throws mox::Exception, "Properties: wrong data in
    /// config data "
    /// + " in line " + its number, with the lines before it in the store; a FileConfig writes these
    /// back like any others.
    void Parse(const std::string& data);

    /// Returns the entries in the order of their names, each as name, "=", value and a newline.
    /// This includes placeholders, but no comments, and "#" is not escaped: Parse does not always
    /// restore the same entries.
    std::string GetAsDataFile() const;

    /// Doubles every "#" of text, in place, since a single one starts a comment in the text form.
    /// For text without carriage returns, Preunmask and then Unmask revert it.
    static void Mask(std::string& text);

    /// The first step of reading a line: replaces every pair "##", from the left, by a carriage
    /// return, in place. The first remaining "#", if any, starts the comment.
    static void Preunmask(std::string& text);

    /// The second step, for the text before and after that "#": replaces every carriage return by
    /// "#", in place.
    static void Unmask(std::string& text);

protected:
    /// The entries. Every pointer is non-null, and every key equals its record's name.
    std::map<std::string, PropertyPtr> propertyMap;

    /// Set by Put, Delete, Clear and Parse; only a derived class ever resets it.
    bool modified = false;
};

}  // namespace mox
