// The panel "音" of the startup menu: the sound device and its block, a test tone, keys at once, and how far
// key and sound lie apart. The device is open as long as the panel shows. What the panel holds is made when
// it shows first, so that the start of the menu does not wait for it.
#pragma once

#include <QWidget>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "forms/tapping.h"
#include "platform/sound_device.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QTimer;

namespace qlm {

class Controls;

class AudioPanel : public QWidget {
 public:
  explicit AudioPanel(Controls& controls);
  ~AudioPanel() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Make();
  QWidget* MakeDeviceGroup(Controls& controls);
  QWidget* MakeKeyGroup(Controls& controls);
  QWidget* MakeTapGroup(Controls& controls);
  QComboBox* MakeBlockChoice(Controls& controls);

  void Open();
  void Close();
  void PlayTone();
  // What has changed by itself, five times a second; the first time, it opens the device.
  void Watch();
  // All that is told of the device, in the language that is shown.
  void ShowDevice();

  void StartTaps();
  void Tap();
  // Without a result, as when a person leaves.
  void StopTaps();
  void FinishTaps();
  void ShowTaps();

  Controls* controls_;  // until all is made
  QLabel* device_ = nullptr;
  QLabel* block_ = nullptr;
  QLabel* ahead_ = nullptr;
  QLabel* late_ = nullptr;
  int32_t lateBefore_ = 0;  // blocks that came too late in the last play
  QLabel* tapResult_ = nullptr;
  QPushButton* tone_ = nullptr;
  QPushButton* measure_ = nullptr;
  QPushButton* tap_ = nullptr;
  QTimer* watch_ = nullptr;

  bool open_ = false;
  int drains_ = 0;  // how often the device was drained, so that it shows how far it takes in advance
  platform::SoundDeviceInfo info_;
  std::string name_;
  platform::SoundBufferPtr toneSound_;

  platform::SoundBufferPtr clicks_;  // while they sound
  std::vector<int64_t> taps_;
  bool tapsTried_ = false;
  std::optional<TapResult> result_;
};

}  // namespace qlm
