#pragma once
// Small file-system helpers every subsystem shares: paths as the UTF-8
// strings SDL and its companions take, an existence test that never throws,
// and the ASCII lower-casing used to compare file names and extensions.

#include <cstdio>
#include <filesystem>
#include <string>

namespace vorn {

// A file-system path as a UTF-8 narrow string.
std::string pathString(const std::filesystem::path& path);

// True when the path names any existing entry (file, folder or other); false
// when it does not, or when its status cannot be read. Never throws.
bool pathExists(const std::string& path);

// std::fopen for a UTF-8 path. The narrow fopen of Windows' C runtime reads
// the path in the ANSI code page, so a folder named in any other script would
// not open there; this one takes the path as UTF-8 on every platform.
std::FILE* openFile(const std::string& path, const char* mode);

// Writes the text to a new file at the path (text mode, so CR LF line ends
// on Windows) and waits until it has reached the disk. False on any error,
// a short write included; the file may then hold part of the text.
bool writeFileDurably(const std::string& path, const std::string& text);

// Puts the file `from` in the place of `to` in one step, replacing it: a
// reader sees the old file or the new one, never a mixture or nothing. False
// when it could not be done, and then both files are as they were.
bool replaceFile(const std::string& from, const std::string& to);

// The text with A-Z turned into a-z and every other byte left alone.
std::string lowerAscii(std::string text);

}  // namespace vorn
