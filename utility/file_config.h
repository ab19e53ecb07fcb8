/// mox::FileConfig: a property store bound to a configuration file.
///
/// The file is a sequence of lines "name = value # comment", of blank lines and of comments. Bytes
/// are taken as they are, up to the first NUL of a line. Lines end with a line feed; carriage
/// returns at either end of a line are dropped, and one within it reads as "#". "##" stands for a
/// literal "#"; the first other "#" starts a comment, which runs to the end of the line. Name and
/// value are trimmed of white space; the name ends at the first "=" and must not be empty. A line
/// of more than 4094 bytes, its line feed counted, is taken in pieces of that size, each as a line
/// of its own. Where a name stands on two lines, the later one wins.
///
/// Every line becomes one record of the store, so comments and blank lines come back when the store
/// is written: one line per record in the order of the records' indices (of their names where
/// those are equal), "name=value", " #" and the comment if there is one, and a line feed. A comment
/// that begins with "#" gets a blank in front, and a "##" within one reads back as "#". What the
/// format cannot hold is written as it is and reads back as something else, or not at all: an empty
/// name, one with "=", line feeds, carriage returns and NUL bytes, outer white space, lines of more
/// than 4094 bytes.
///
/// Failures are thrown as mox::Exception with the path as it was given.
///
///     mox::FileConfig config("reader.cfg", false);
///     if (config.GetAsInt("Count", 0) == 0) config.Put("Count", "1");
///     config.Save();  // without it the destructor would write the file, if it was changed
#pragma once

#include <string>

#include "utility/properties.h"

namespace mox {

class FileConfig : public Properties {
public:
    /// An empty store bound to no file.
    FileConfig() = default;

    /// Binds to the file at path and reads it. With missingAllowed a file that cannot be opened
    /// reads as an empty one. Throws as ReadConfigFile does, and then writes nothing.
    FileConfig(const std::string& path, bool missingAllowed);

    /// Writes the store back to fileName if it was modified and fileName is not empty, save where
    /// the last read failed and no Save has accepted the contents since. Throws as
    /// WriteConfigFile does, after everything else was released; while another exception is in
    /// flight the failure is dropped.
    ~FileConfig() noexcept(false) override;

    /// Replaces the store by the contents of the bound file; it is then unmodified. Throws as
    /// ReadConfigFile does.
    void Reopen();

    /// Binds to the file at path, also when reading it fails, and does the same.
    void Reopen(const std::string& path);

    /// Writes the store to the bound file; it is then unmodified. Throws as WriteConfigFile does.
    void Save();

    /// Binds to the file at path, also when writing it fails, and does the same.
    void SaveAs(const std::string& path);

    /// Replaces the store by the contents of the file at path, whatever file is bound, and marks it
    /// modified. Throws "FileConfig: unable to open config file " + path with the store empty
    /// (unless allowMissing); "FileConfig: wrong data in config file " + path + " in line " + the
    /// line's number, with the store holding the lines before it; "FileConfig: error reading config
    /// file " + path with the store holding every line read.
    void ReadConfigFile(const char* path);

    /// Writes header and store to the file at path, which is created or truncated, whatever file is
    /// bound; changes nothing in this object. Throws "FileConfig: unable to open config file " +
    /// path with the file untouched; a failure in writing to the open file is not reported.
    void WriteConfigFile(const char* path) const;

    std::string fileName;       ///< the bound file; empty when there is none
    std::string header;         ///< written as it is before the first line; the user's to set
    bool allowMissing = false;  ///< a file that cannot be opened reads as an empty one

private:
    /// True while the store may hold only a part of the file that was last read.
    bool incomplete = false;
};

}  // namespace mox
