// The controls of the startup menu: each shows a setting, writes it at once, and says its words in the
// language that is shown.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <functional>
#include <vector>

#include "base/text.h"

namespace qlm {

QString ToQt(TextView text);
Text FromQt(const QString& text);

// Makes controls by their names. Captions and tool tips are given in Japanese; a tool tip may be null. Who
// makes them puts them into a layout.
class Controls {
 public:
  QPushButton* Button(const char* name, const char* caption, const char* tip = nullptr);
  QGroupBox* Group(const char* caption);
  QLabel* Label(const char* caption);
  // Tied to its field: a screen reader says it there.
  QLabel* LabelFor(QWidget* field, const char* caption);
  // Longer words, on as many lines as they need.
  QLabel* Note(const char* words);

  // A tick for a Boolean, or for a number that is 1 when ticked and 0 when not.
  template <typename T>
  QCheckBox* Tick(const char* name, T& setting, const char* caption, const char* tip = nullptr) {
    auto* const box = new QCheckBox;
    box->setChecked(static_cast<int>(setting) > 0);
    QObject::connect(box, &QCheckBox::toggled, [&setting](bool ticked) { setting = static_cast<T>(ticked); });
    return Finish(box, name, caption, tip);
  }
  // The items stand for the values from `first` on.
  template <typename T>
  QComboBox* Choice(const char* name, T& setting, int first, const std::vector<const char*>& items,
                    const char* tip = nullptr) {
    auto* const box = Box(name, items, tip);
    box->setCurrentIndex(std::clamp(static_cast<int>(setting) - first, 0, box->count() - 1));
    QObject::connect(box, &QComboBox::activated,
                     [&setting, first](int index) { setting = static_cast<T>(first + index); });
    return box;
  }
  // Without items of its own.
  QComboBox* Box(const char* name, const std::vector<const char*>& items, const char* tip = nullptr);
  // `take` stores what is typed, or gives false; the field is then red.
  QLineEdit* Field(const char* name, const QString& text, std::function<bool(TextView)> take,
                   const char* tip = nullptr);

  // Runs now, and whenever the language changes.
  void Say(std::function<void()> words);
  // All words anew, in the language that is shown now.
  void SayAll() const;

 private:
  void SetTip(QWidget* control, const char* tip);
  template <typename Control>
  Control* Finish(Control* control, const char* name, const char* caption, const char* tip) {
    control->setObjectName(QString::fromUtf8(name));
    Say([=] { control->setText(Caption(caption)); });
    SetTip(control, tip);
    return control;
  }
  static QString Caption(const char* caption);

  std::vector<std::function<void()>> words_;
};

}  // namespace qlm
