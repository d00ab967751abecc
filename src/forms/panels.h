// The panels of the startup menu that hold settings alone, one control each.
#pragma once

class QWidget;

namespace qlm {

class Controls;

// "メイン": loading, play, song select, network. Its buttons are connected by the menu.
QWidget* MakeMainPanel(Controls& controls);
// "その他の設定".
QWidget* MakeOtherPanel(Controls& controls);
// "スキンマッパー".
QWidget* MakeSkinPanel(Controls& controls);

}  // namespace qlm
