// Translation and faces of the dialogs.
#include "forms/language.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

#include "state/settings.h"

static void LoadTexts() { Q_INIT_RESOURCE(forms); }

namespace qlm {
namespace {

// The translations in use: ours into English, and the toolkit's own words into Japanese. Of the application,
// which they must not outlive.
struct Translations : QObject {
  explicit Translations(QObject* application) : QObject(application) {}
  QTranslator english;
  QTranslator toolkit;
  bool showsEnglish = false;
};

Translations& Shown() {
  static QPointer<Translations> shown;
  if (shown.isNull()) shown = new Translations(qApp);
  return *shown;
}

bool SystemSpeaksAnother() {
  const QStringList languages = QLocale::system().uiLanguages();
  if (languages.isEmpty()) return false;
  const QLocale::Language first = QLocale(languages.first()).language();
  return first != QLocale::C && first != QLocale::AnyLanguage && first != QLocale::Japanese;
}

void Show(bool english) {
  LoadTexts();
  Translations& shown = Shown();
  shown.showsEnglish = english;
  if (english) {
    QCoreApplication::removeTranslator(&shown.toolkit);
    if (shown.english.load(QStringLiteral(":/forms_en.qm")))
      QCoreApplication::installTranslator(&shown.english);
  } else {
    QCoreApplication::removeTranslator(&shown.english);
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (shown.toolkit.load(QStringLiteral("qtbase_ja"), folder))
      QCoreApplication::installTranslator(&shown.toolkit);
  }
}

}  // namespace

QString Words(const char* japanese) { return QCoreApplication::translate("forms", japanese); }

void ShowChosenLanguage() { Show(MenuLanguage.empty() ? SystemSpeaksAnother() : MenuLanguage == u"en"); }

bool ShowsEnglish() { return Shown().showsEnglish; }

void SwitchLanguage() {
  const bool english = !ShowsEnglish();
  MenuLanguage = english ? u"en" : u"ja";
  Show(english);
}

void ChooseFaces() {
  // A program that was unpacked into a folder has a Japanese face beside it.
  const QString own = QCoreApplication::applicationDirPath() + QStringLiteral("/fonts/ipag.ttf");
  if (QFile::exists(own)) QFontDatabase::addApplicationFont(own);
  QFont font = QApplication::font();
  // The system's face first, as people know it; the others have what it lacks.
  font.setFamilies({QFontInfo(font).family(), QStringLiteral("Noto Sans CJK JP"),
                    QStringLiteral("Noto Sans JP"), QStringLiteral("IPAPGothic"), QStringLiteral("IPAGothic"),
                    QStringLiteral("Monapo")});
  QApplication::setFont(font);
}

}  // namespace qlm
