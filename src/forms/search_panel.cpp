// The list of search folders.
#include "forms/search_panel.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QMimeData>
#include <QUrl>
#include <QVBoxLayout>
#include <functional>
#include <utility>

#include "base/paths.h"
#include "forms/boxes.h"
#include "forms/controls.h"
#include "forms/language.h"
#include "library/jukebox.h"
#include "platform/files.h"

namespace qlm {
namespace {

// The system's form of what is dropped; a name that is no UTF-8 keeps its bytes.
std::string DroppedPath(const QUrl& url) {
  return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

// Folders can be dropped on it, and taken out by a key.
class FolderList : public QListWidget {
 public:
  FolderList(std::function<void(const std::string&)> dropped, std::function<void()> removed)
      : dropped_(std::move(dropped)), removed_(std::move(removed)) {
    setAcceptDrops(true);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Delete) return removed_();
    QListWidget::keyPressEvent(event);
  }
  void dragEnterEvent(QDragEnterEvent* event) override { TakeFiles(event); }
  void dragMoveEvent(QDragMoveEvent* event) override { TakeFiles(event); }
  void dropEvent(QDropEvent* event) override {
    if (!TakeFiles(event)) return;
    for (const QUrl& url : event->mimeData()->urls()) {
      if (url.isLocalFile()) dropped_(DroppedPath(url));
    }
  }

 private:
  static bool TakeFiles(QDropEvent* event) {
    const bool files = event->mimeData()->hasUrls();
    if (files) event->acceptProposedAction();
    return files;
  }

  std::function<void(const std::string&)> dropped_;
  std::function<void()> removed_;
};

Text FolderOf(const QListWidgetItem& item) { return FromQt(item.data(Qt::UserRole).toString()); }

// By this two folders are one, whatever their case.
Text Known(const Text& folder) {
  Text known = UCase(SearchedFolder(folder).value_or(folder));
  if (known.ends_with(u'\\')) known.pop_back();
  return known;
}

}  // namespace

SearchPanel::SearchPanel(Controls& controls)
    : list_(new FolderList([this](const std::string& path) { Add(path); }, [this] { Remove(); })),
      noConfirm_(nullptr),
      noLimit_(nullptr) {
  list_->setObjectName(QStringLiteral("lstSPath"));
  list_->setSpacing(1);
  controls.Say([this] {
    list_->setToolTip(Words("エクスプローラからフォルダをドラッグ&ドロップでも追加できます"));
    list_->setAccessibleName(Words("BMS検索パス"));
  });
  QLabel* const note = controls.Note(
      "検索対象をチェックして「検索開始」してください。検索開始を押すまでリストは保存されません。\r\n"
      "追加はリストに直接フォルダをドラッグ&&ドロップしてもOKです。");
  note->setBuddy(list_);
  QPushButton* const add =
      controls.Button("cmdAdd0", "追加", "追加は左のリストへドラッグ&ドロップでも行えます。");
  QPushButton* const remove = controls.Button("cmdAdd1", "削除");
  noConfirm_ = new QCheckBox;
  noConfirm_->setObjectName(QStringLiteral("chkNoConfirm"));
  noLimit_ = new QCheckBox;
  noLimit_->setObjectName(QStringLiteral("chkNoLimit"));
  controls.Say([this] {
    noConfirm_->setText(Words("無確認で削除"));
    noLimit_->setText(Words("階層無制限に検索"));
    noLimit_->setToolTip(Words("検索する階層を制限しません。"));
  });
  QPushButton* const search = controls.Button("cmdSStart", "検索開始");

  auto* const around = new QVBoxLayout(this);
  QGroupBox* const group = controls.Group("BMS検索パス");
  around->addWidget(group);
  auto* const grid = new QGridLayout(group);
  grid->addWidget(note, 0, 0, 1, 2);
  grid->addWidget(list_, 1, 0);
  auto* const beside = new QVBoxLayout;
  grid->addLayout(beside, 1, 1);
  beside->addWidget(add);
  beside->addWidget(remove);
  beside->addWidget(noConfirm_);
  beside->addStretch(1);
  beside->addWidget(noLimit_);
  beside->addWidget(search);
  grid->setColumnStretch(0, 1);

  connect(add, &QPushButton::clicked, [this] { AddByDialog(); });
  connect(remove, &QPushButton::clicked, [this] { Remove(); });
  LoadSearchDirs();
}

void SearchPanel::LoadSearchDirs() {
  const SearchFolders search = ReadSearchFolders();
  comments_ = search.comments;
  for (const SearchFolder& folder : search.folders) Append(folder);
}

void SearchPanel::Append(const SearchFolder& folder) {
  // As people here know paths; the item keeps the line of the file.
  auto* const item = new QListWidgetItem(ToQt(Replace(folder.folder, u"\\", u"/")), list_);
  item->setData(Qt::UserRole, ToQt(folder.folder));
  item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
  item->setCheckState(folder.ticked ? Qt::Checked : Qt::Unchecked);
}

void SearchPanel::Add(const std::string& path) {
  const Text folder = platform::InnerPath(path);
  if (!platform::IsFolder(folder)) return;
  for (const SearchFolder& each : Shown().folders) {
    if (Known(each.folder) == Known(folder)) return;
  }
  if (const Text letters = LettersNotStored(folder); !letters.empty()) {
    const QString refused = Words("%1\nこのフォルダは追加できません。リストに保存できない文字があります: %2");
    ShowBox(platform::BoxIcon::kWarning, FromQt(Words("検索パスの追加")),
            FromQt(refused.arg(ToQt(Replace(folder, u"\\", u"/")), ToQt(letters))));
    return;
  }
  Append({folder, true});
  list_->setCurrentRow(list_->count() - 1);
}

void SearchPanel::AddByDialog() {
  const QString chosen = QFileDialog::getExistingDirectory(window(), Words("検索パスの追加"));
  if (!chosen.isEmpty()) Add(QFile::encodeName(chosen).toStdString());
}

void SearchPanel::Remove() {
  const QListWidgetItem* const item = list_->currentItem();
  if (item == nullptr) return;
  const Text folder = FolderOf(*item);
  if (!noConfirm_->isChecked() &&
      !Ask(Words("削除"), ToQt(GetFileName(folder)) + Words("を削除してもよろしいですか?"))) {
    return;
  }
  // Those that searches of both readings write for this folder.
  const Text jukebox = JukeboxOf(SearchedFolder(folder).value_or(folder));
  for (const TextView extension : {u".qbl", u".qwl"}) platform::DeleteFile(WithExtension(jukebox, extension));
  delete item;
}

SearchFolders SearchPanel::Shown() const {
  SearchFolders search{comments_, {}};
  for (int row = 0; row < list_->count(); ++row) {
    const QListWidgetItem& item = *list_->item(row);
    search.folders.push_back({FolderOf(item), item.checkState() == Qt::Checked});
  }
  return search;
}

bool SearchPanel::Save() const {
  if (SaveSearchFolders(Shown())) return true;
  ShowBox(platform::BoxIcon::kWarning, u"quillmarch",
          u"qlm_searchdir.txt cannot be written.\nIs the disk full, or the folder read-only?");
  return false;
}

bool SearchPanel::NothingTicked() const {
  for (int row = 0; row < list_->count(); ++row) {
    if (list_->item(row)->checkState() == Qt::Checked) return false;
  }
  return true;
}

bool SearchPanel::NoLimit() const { return noLimit_->isChecked(); }

}  // namespace qlm
