// The ground of the menu's tests: the toolkit without a display, and the menu over a data folder of its own.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "forms/menu_window.h"
#include "tests/support/game_test.h"

namespace qlm {

class MenuTest : public GameTest {
 public:
  MenuTest();
  ~MenuTest() override;

  // The menu as it comes up.
  void Open();
  void Close();

  template <typename Control>
  Control& Get(const std::string& name) const {
    auto* const control = menu->findChild<Control*>(QString::fromStdString(name));
    EXPECT_NE(control, nullptr) << name;
    // Something to go on with.
    static Control missing;
    return control != nullptr ? *control : missing;
  }
  QCheckBox& Tick(const std::string& name) const { return Get<QCheckBox>(name); }
  QComboBox& Choice(const std::string& name) const { return Get<QComboBox>(name); }
  QLineEdit& Field(const std::string& name) const { return Get<QLineEdit>(name); }
  QPushButton& Button(const std::string& name) const { return Get<QPushButton>(name); }
  QListWidget& List() const { return Get<QListWidget>("lstSPath"); }
  QTabWidget& Panels() const { return *menu->findChild<QTabWidget*>(); }
  std::vector<std::string> Items(const std::string& name) const;
  // The folders of the list, unticked ones with "#" in front.
  std::vector<std::string> Listed() const;

  // What a person does.
  void Toggle(const std::string& name) const;
  void Choose(const std::string& name, int item) const;
  void Type(const std::string& name, const std::string& text) const;
  void Press(const std::string& name) const;

  // A box that comes up while `happening` runs, which is answered by the button of this caption; empty when
  // none came.
  struct Box {
    std::string title;
    std::string text;
  };
  static Box BoxDuring(const std::function<void()>& happening, const std::string& answer);

  std::unique_ptr<MenuWindow> menu;
};

}  // namespace qlm
