// What quillon-lot needs of the platform: its words, file names as the
// standard library's paths, the terminal, and the line end of its
// report.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::lot {

// The words of the command line after the program's name, file names held
// as the rest of the program holds them: the bytes as they are on POSIX,
// UTF-8 on Windows.
std::vector<std::string> MotsProgramme(int argc, char** argv);

// A file name held that way, as a path of the standard library, and back.
std::filesystem::path CheminNatif(const std::string& texte);
std::string TexteChemin(const std::filesystem::path& chemin);

// True where a file name may hold a backslash (POSIX); on Windows it
// separates folders.
bool BarreInverseDansLesNoms();

// True when standard error is a terminal (a console on Windows).
bool ErreurEstTerminal();

// Bytes to standard output as they are (the JSON report, UTF-8 already).
void EcrireSortieBrute(std::string_view octets);

// The line end of the report on standard output: LF on POSIX, CR LF on
// Windows.
std::string_view FinLigne();

}  // namespace quillon::lot
