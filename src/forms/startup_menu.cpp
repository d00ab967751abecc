// The toolkit's life: from the menu's first look to its end, before the game's window opens.
#include "forms/startup_menu.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QTimer>

#include "forms/language.h"
#include "forms/menu_window.h"
#include "platform/window.h"
#include "platform/window_system.h"

namespace qlm {
namespace {

QStringList Drivers(const QString& name) {
  const QDir folder(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
  return folder.entryList({QStringLiteral("libq%1.so").arg(name), QStringLiteral("libq%1-*.so").arg(name)});
}

// The toolkit ends the program where it lacks the driver that a person asks for, as may be right for another
// one of its versions: then it is to choose by itself.
void LeaveOutUnknownDriver() {
  const QString asked = qEnvironmentVariable("QT_QPA_PLATFORM");
  for (const QString& each : asked.split(';')) {
    if (!Drivers(each.section(':', 0, 0)).isEmpty()) return;
  }
  qunsetenv("QT_QPA_PLATFORM");
}

// It ends the program where it knows no display, too, so that it must not be asked.
bool ToolkitKnowsDisplay() {
  LeaveOutUnknownDriver();
  return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || platform::XServerAnswers() ||
         !Drivers(QStringLiteral("wayland")).isEmpty();
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
  QTimer soon;
  soon.setSingleShot(true);
  if (shown != nullptr) QObject::connect(&soon, &QTimer::timeout, shown);
  soon.start(0);
  QApplication::exec();
  return window.StartsGame();
}

}  // namespace qlm
