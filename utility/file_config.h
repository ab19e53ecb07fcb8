/// mox::FileConfig: a property store bound to a configuration file.
///
/// The file is a sequence of lines "name = value # comment", of blank lines and of comments. Bytes
/// are not interpreted; a NUL ends the line. Lines end with a newline; carriage returns at either
/// end of a line are dropped, and one within it reads as "#". "##" is a literal "#"; the first
/// other "#" starts a comment, which extends to the end of the line. Name and value are trimmed of
/// white space; the name ends at the first "=" and must not be empty. A line of more than 4094
/// bytes, newline included, is split into lines of that size. The last line with a name wins.
///
/// Every line becomes one record of the store, so comments and blank lines are preserved when the
/// store is written: one line per record, ordered by index, then by name, as "name=value", " #" and
/// the comment if there is one, and a newline. A comment that begins with "#" is preceded by a
/// space, and a "##" within one reads back as "#". Not representable, and written as is without
/// round-tripping: an empty name, one with "=", newlines, carriage returns and NUL bytes, outer
/// white space, lines of more than 4094 bytes.
///
/// Failures are thrown as mox::Exception with the path as it was given.
///
///     mox::FileConfig config("reader.cfg", false);
///     if (config.GetAsInt("Count", 0) == 0) config.Put("Count", "1");
///     config.Save();  // otherwise the destructor writes the file if it was changed
#pragma once

#include <string>

#include "utility/properties.h"

namespace mox {

class FileConfig : public Properties {
public:
    /// An empty store bound to no file.
    FileConfig() = default;

    /// Binds to the file at path and reads it, with missingAllowed as allowMissing. Throws like
    /// ReadConfigFile; nothing is written then.
    FileConfig(const std::string& path, bool missingAllowed);

    /// Writes the store to fileName if it was modified and fileName is not empty. Nothing is
    /// written if the last read threw, or failed to open a file that exists, and nothing was saved
    /// since. Throws like WriteConfigFile, after releasing everything else; during unwinding the
    /// error is swallowed.
    ~FileConfig() noexcept(false) override;

    /// Replaces the store by the contents of the bound file; it is then unmodified. Throws like
    /// ReadConfigFile.
    void Reopen();

    /// Binds to path, even if reading it fails, and then does the same.
    void Reopen(const std::string& path);

    /// Writes the store to the bound file; it is then unmodified. Throws like WriteConfigFile.
    void Save();

    /// Binds to path, even if writing it fails, and then does the same.
    void SaveAs(const std::string& path);

    /// Replaces the store by the contents of the file at path, whatever file is bound, and sets the
    /// modified flag. Throws "FileConfig: unable to open config file " + path with the store empty
    /// (unless allowMissing); "FileConfig: wrong data in config file " + path + " in line " + the
    /// line's number, with the lines before it in the store; "FileConfig: error reading config file
    /// " + path with every line read so far in the store.
    void ReadConfigFile(const char* path);

    /// Writes header and store to the file at path, which is created or truncated, whatever file is
    /// bound; changes nothing in this object. Throws "FileConfig: unable to open config file " +
    /// path with the file untouched; write errors after opening are not reported.
    void WriteConfigFile(const char* path) const;

    std::string fileName;       ///< the bound file; empty if none
    std::string header;         ///< written verbatim before the first line; never set by this class
    bool allowMissing = false;  ///< a file that cannot be opened reads as an empty one

private:
    /// True while the store may lack contents of the file last read.
    bool incomplete = false;
};

}  // namespace mox
