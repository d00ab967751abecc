// The panel "BMS検索" of the startup menu: the folders that are searched for charts.
#pragma once

#include <QWidget>
#include <string>

#include "base/text.h"
#include "files/search_folders.h"

class QCheckBox;
class QListWidget;
class QListWidgetItem;

namespace qlm {

class Controls;

class SearchPanel : public QWidget {
 public:
  // Its button that begins the search is connected by the menu.
  explicit SearchPanel(Controls& controls);

  // Writes the search file. False, with a box that says so, when it cannot be written.
  bool Save() const;
  bool NothingTicked() const;
  bool NoLimit() const;

 private:
  // Fills the list from the search file.
  void LoadSearchDirs();
  // A folder by the system's path. Nothing happens when it is there already; one that the file cannot hold is
  // refused in a box.
  void Add(const std::string& path);
  void AddByDialog();
  void Remove();
  void Append(const SearchFolder& folder);
  SearchFolders Shown() const;

  Text comments_;
  QListWidget* list_;
  QCheckBox* noConfirm_;
  QCheckBox* noLimit_;
};

}  // namespace qlm
