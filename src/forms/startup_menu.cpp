// The toolkit's life: from the menu's first look to its end, before the game's window opens.
#include "forms/startup_menu.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QTimer>

#include "forms/language.h"
#include "forms/menu_window.h"
#include "platform/window.h"

namespace qlm {
namespace {

// The toolkit ends the program where it knows no display, so that it must not be asked.
bool ToolkitKnowsDisplay() {
  if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY")) return true;
  const QDir drivers(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
  return !drivers.entryList({QStringLiteral("libqwayland*")}).isEmpty();
}

}  // namespace

bool MenuCanBeShown() { return platform::HasDisplay() && ToolkitKnowsDisplay(); }

bool RunStartupMenu(void (*shown)()) {
  int words = 1;
  char name[] = "quillmarch";
  char* arguments[] = {name, nullptr};
  QApplication application(words, arguments);
  ChooseFaces();
  ShowChosenLanguage();
  MenuWindow window;
  window.show();
  // Without a window manager nobody else gives it the keyboard.
  window.activateWindow();
  if (shown != nullptr) QTimer::singleShot(0, shown);
  QApplication::exec();
  return window.StartsGame();
}

}  // namespace qlm
