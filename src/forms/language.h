// The language of the dialogs. Their words stand in the code in Japanese, and in English in forms_en.ts.
#pragma once

#include <QString>

namespace qlm {

// Words in the language that is shown; those that forms_en.ts lacks stay Japanese.
QString Words(const char* japanese);

// Shows the language that the setting MenuLanguage names; without one English where the system's language is
// known and is not Japanese. Needs a QApplication, whose windows learn of it by a QEvent::LanguageChange.
void ShowChosenLanguage();
bool ShowsEnglish();
// To the other language, which the setting then names.
void SwitchLanguage();

// Faces in which both languages are legible, where the system's own lacks kana.
void ChooseFaces();

}  // namespace qlm
