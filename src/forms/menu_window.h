// The window of the startup menu.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
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

  // What the two network buttons do.
  void HostAndStart();
  void Connect();
  void DisableNetworkButtons();
  // What stands beside them; null for nothing.
  void SayOfNetwork(const char* words);
  // That, and who has come together.
  void ShowNetwork();
  // The network's part of a start. A client alone goes on without a battle, and is told so.
  void StartSession();

  // What the search button does.
  void SearchAndSave();
  // Searches for charts with all controls disabled, and shows how far it is. False when there is nothing to
  // play.
  bool Search();
  // Each chart and folder has a caption; during a search no more are shown than can be read.
  void ShowScanned(TextView caption);
  // Lets events run: the network's timer, and a request to end the program.
  void Pump();

  Controls controls_;
  Hooks gameHooks_;
  QElapsedTimer captionShown_;
  SearchPanel* search_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QWidget* content_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QPushButton* stop_ = nullptr;
  QLabel* note_ = nullptr;
  QPushButton* start_ = nullptr;
  const char* saidOfNetwork_ = nullptr;
  bool networkAsked_ = false;  // one of its buttons was pressed
  bool awaitsHost_ = false;    // the game starts when the host says so
  bool closed_ = false;
  bool startsGame_ = false;
};

}  // namespace qlm
