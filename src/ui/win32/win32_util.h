// What the Win32 windows share: texts between UTF-8 and the wide API, twips
// at a window's DPI, the dialog font, and placing the controls of a form.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "io/wide_text.h"
#include "ui/forms.h"

// Sent from Windows 8.1 on; the headers name it only for such targets.
#ifndef WM_DPICHANGED
#define WM_DPICHANGED 0x02E0
#endif

namespace quillon::win32 {


// The DPI of the monitor the window is on (96 at 100 %).
UINT DpiFenetre(HWND fenetre);
// Twips (1/1440 inch) in pixels at `dpi`.
int Px(int twips, UINT dpi);

// The dialog font at 8 points, in the face of the system's message font, at
// `dpi`. The caller deletes it.
HFONT CreerPolice(UINT dpi);

// The window's size for a client area of `largeur` x `hauteur` twips, with
// its style (and menu) at `dpi`.
SIZE TailleFenetre(int largeur, int hauteur, DWORD style, DWORD styleEtendu, bool menu, UINT dpi);

// The control identifier of the form's control at `index`: 1000 and up,
// clear of IDOK and IDCANCEL, which the dialog manager sends for Enter and
// Escape.
inline int IdControle(std::size_t index) { return 1000 + static_cast<int>(index); }
// The index in its form of control `nom`, or -1.
int IndexControle(const Formulaire& forme, std::string_view nom);

// Creates the form's controls in its order (the tab order) and places them
// at `dpi`; a list gets the height its entries need when dropped down.
void CreerControles(HWND fenetre, const Formulaire& forme, HFONT police, UINT dpi);
// Places them again, at a new DPI.
void PlacerControles(HWND fenetre, const Formulaire& forme, HFONT police, UINT dpi);

// The text of a list's selected entry, in UTF-8.
std::string TexteSelection(HWND liste);

}  // namespace quillon::win32
