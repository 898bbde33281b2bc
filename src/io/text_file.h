// Text files read and written one line at a time.
//
// Bytes go through unchanged: a line read is the bytes up to its line end, a
// line written is the bytes given followed by CR LF. Columns count bytes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "io/file_system.h"

namespace quillon {

// An open text stream, for reading or for writing.
//
// Reading accepts CR LF and a lone LF as line ends (a lone CR is an ordinary
// byte of the line). The line counter Line() is the number of the line the
// next read would return: 1 at first, plus one for each line end consumed,
// so a last line without line end does not advance it.
//
// A failing read or write puts the stream in error; EnErreur() tells. So
// does a line longer than kLongueurLigneMax: nothing that long is a point
// line, and memory stays bounded whatever the source.
class FluxTexte {
 public:
  static constexpr std::size_t kLongueurLigneMax = std::size_t{1} << 20;  // 1 MiB, line end aside

  FluxTexte() = default;
  FluxTexte(const FluxTexte&) = delete;
  FluxTexte& operator=(const FluxTexte&) = delete;

  void Attacher(std::unique_ptr<SupportFichier> support, bool ecriture);
  bool Ouvert() const { return support_ != nullptr; }
  const SupportFichier* Support() const { return support_.get(); }

  // Reading.
  bool AtEndOfStream();
  // The next line, without its line end. The view stays valid until the next
  // call on this stream. False at the end or on a read error.
  bool ReadLine(std::string_view& ligne);
  int64_t Line() const { return ligne_; }
  // Counter field, for whoever needs to follow it without a call.
  const int64_t* CompteurLignes() const { return &ligne_; }

  // Writing (buffered). A line may also be written in pieces: Write for
  // each, then EndLine.
  void WriteLine(std::string_view texte);
  void Write(std::string_view texte);
  void EndLine() { Write("\r\n"); }
  bool Vider();  // writes out the buffer; false on error

  bool EnErreur() const { return erreur_; }
  // Writes out what is pending and closes: a file being written is then in
  // place. False if either failed; the file of that name is then as it was.
  bool Close();
  // Closes a file being written without putting it in place; the file of
  // that name is left as it was.
  void Abandonner();

 private:
  bool Remplir();  // reads more bytes after the pending ones
  // Room for `taille` more bytes in the buffer, written out first if need
  // be; false on error, or when they would not fit even in an empty buffer.
  bool Preparer(std::size_t taille);
  // Straight to the file, for what is longer than the buffer.
  bool Direct(std::string_view texte);
  void Liberer();     // drops the support and the buffer
  bool TropLongue();  // puts a stream in error for a line too long; false

  std::unique_ptr<SupportFichier> support_;
  std::vector<char> tampon_;
  std::size_t debut_ = 0;  // reading: first pending byte
  std::size_t fin_ = 0;    // reading: end of the pending bytes; writing: end of the buffered bytes
  bool ecriture_ = false;
  bool finAtteinte_ = false;
  bool erreur_ = false;
  int64_t ligne_ = 1;
};

// One file of the run settings: its path and its stream while open.
struct FichierTexte {
  std::string Nom;
  FluxTexte Flux;
};

// Open, create and close; each returns its success and reports nothing.
bool OuvrirFichierLecture(FluxTexte& flux, const std::string& nom, SystemeFichiers& systeme);
// `proteges`: open files that the new one must not be (the source, say).
bool CreerFichierEcriture(FluxTexte& flux, const std::string& nom, SystemeFichiers& systeme,
                          std::initializer_list<const FluxTexte*> proteges = {});
bool FermerFichier(FluxTexte& flux);
// Closes without putting a written file in place (a failed run).
void AbandonnerFichier(FluxTexte& flux);

// Writes a whole file at once (a report, an index) through the file service,
// replacing the file of that name only once written, as the targets are: a
// failure or a stop while it writes leaves the previous file as it was.
bool EcrireFichier(SystemeFichiers& systeme, const std::string& chemin, std::string_view octets);

}  // namespace quillon
