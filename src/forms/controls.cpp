// Controls of the startup menu.
#include "forms/controls.h"

#include <QApplication>
#include <QPalette>
#include <QSignalBlocker>
#include <utility>

#include "forms/language.h"

namespace qlm {
namespace {

// Legible on light desktops and on dark ones.
void ShowWhetherTaken(QLineEdit* field, bool taken) {
  QPalette palette;
  if (!taken) {
    palette.setColor(QPalette::Base, QColor(0xC8, 0x38, 0x5A));
    palette.setColor(QPalette::Text, Qt::white);
  }
  field->setPalette(palette);
  field->setAccessibleDescription(taken ? QString() : Words("数ではありません。"));
}

}  // namespace

QString ToQt(TextView text) { return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())); }

Text FromQt(const QString& text) { return text.toStdU16String(); }

QString Controls::Caption(const char* caption) { return Words(caption); }

void Controls::Say(std::function<void()> words) {
  words();
  words_.push_back(std::move(words));
}

void Controls::SayAll() const {
  for (const std::function<void()>& words : words_) words();
}

void Controls::SetTip(QWidget* control, const char* tip) {
  if (tip != nullptr) Say([=] { control->setToolTip(Words(tip)); });
}

QPushButton* Controls::Button(const char* name, const char* caption, const char* tip) {
  return Finish(new QPushButton, name, caption, tip);
}

QGroupBox* Controls::Group(const char* caption) {
  auto* const group = new QGroupBox;
  Say([=] { group->setTitle(Words(caption)); });
  return group;
}

QLabel* Controls::Label(const char* caption) {
  auto* const label = new QLabel;
  Say([=] { label->setText(Words(caption)); });
  return label;
}

QLabel* Controls::LabelFor(QWidget* field, const char* caption) {
  QLabel* const label = Label(caption);
  label->setBuddy(field);
  return label;
}

QLabel* Controls::Note(const char* words) {
  QLabel* const note = Label(words);
  note->setWordWrap(true);
  return note;
}

QComboBox* Controls::Box(const char* name, const std::vector<const char*>& items, const char* tip) {
  auto* const box = new QComboBox;
  box->setObjectName(QString::fromUtf8(name));
  for (size_t i = 0; i < items.size(); ++i) box->addItem(QString());
  Say([=] {
    for (size_t i = 0; i < items.size(); ++i) box->setItemText(static_cast<int>(i), Words(items[i]));
  });
  SetTip(box, tip);
  return box;
}

QLineEdit* Controls::Field(const char* name, const QString& text, std::function<bool(TextView)> take,
                           const char* tip) {
  auto* const field = new QLineEdit(text);
  field->setObjectName(QString::fromUtf8(name));
  SetTip(field, tip);
  QObject::connect(field, &QLineEdit::textEdited, [field, take = std::move(take)](const QString& typed) {
    ShowWhetherTaken(field, take(FromQt(typed)));
  });
  return field;
}

}  // namespace qlm
