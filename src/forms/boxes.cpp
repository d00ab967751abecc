// Boxes of the dialogs.
#include "forms/boxes.h"

#include <QApplication>
#include <QMessageBox>

#include "forms/controls.h"
#include "forms/language.h"
#include "platform/text.h"

namespace qlm {
namespace {

QMessageBox::Icon Icon(platform::BoxIcon icon) {
  switch (icon) {
    case platform::BoxIcon::kWarning: return QMessageBox::Warning;
    case platform::BoxIcon::kCritical: return QMessageBox::Critical;
    default: return QMessageBox::Information;
  }
}

}  // namespace

void ShowBox(platform::BoxIcon icon, std::u16string_view title, std::u16string_view text) {
  QMessageBox box(Icon(icon), ToQt(title), Words(platform::EncodeUtf8(text).c_str()), QMessageBox::Ok,
                  QApplication::activeWindow());
  box.exec();
}

bool Ask(const QString& title, const QString& question) {
  QMessageBox box(QMessageBox::Question, title, question, QMessageBox::NoButton,
                  QApplication::activeWindow());
  const QAbstractButton* const yes = box.addButton(Words("はい(&Y)"), QMessageBox::YesRole);
  box.addButton(Words("いいえ(&N)"), QMessageBox::NoRole);
  box.exec();
  return box.clickedButton() == yes;
}

}  // namespace qlm
