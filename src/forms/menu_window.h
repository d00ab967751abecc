// The window of the startup menu.
#pragma once

#include <QDialog>
#include <QPushButton>

#include "base/hooks.h"
#include "forms/controls.h"

class QLabel;
class QProgressBar;
class QTabWidget;

namespace qlm {

class SearchPanel;

class MenuWindow : public QDialog {
 public:
  MenuWindow();
  ~MenuWindow() override;

  // Whether the game is to start; known once the window is closed.
  bool StartsGame() const { return startsGame_; }
  // The start button. The window closes, unless there is nothing to play.
  void Start();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QWidget* MakeContent();
  QWidget* MakeFoot();
  void MakePanels(QTabWidget* tabs);
  void ConnectControls();
  void ConnectHooks();
  // To the panel that is so many options behind the one that shows, around the end.
  void StepPanel(int by);

  // What the search button does.
  void SearchAndSave();
  // Searches for charts with all controls disabled, and shows how far it is. False when there is nothing to
  // play.
  bool Search();
  void ShowScanned(TextView caption);
  // Lets events run: the network's timer, and a request to end the program.
  void Pump() const;

  Controls controls_;
  Hooks gameHooks_;
  SearchPanel* search_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QWidget* content_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QPushButton* stop_ = nullptr;
  QLabel* note_ = nullptr;
  QPushButton* start_ = nullptr;
  bool closed_ = false;
  bool startsGame_ = false;
};

}  // namespace qlm
