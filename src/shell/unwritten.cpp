// What a person is told of files that cannot be written.
#include "shell/unwritten.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "base/paths.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/window.h"
#include "state/message.h"

namespace qlm {
namespace {

std::vector<Text> reported;

}  // namespace

void ReportUnwritten(TextView path) {
  if (std::find(reported.begin(), reported.end(), path) != reported.end()) return;
  reported.emplace_back(path);
  ShowMessage(Join(GetFileName(path), u" cannot be written"));
  std::fprintf(stderr, "quillmarch: %s cannot be written; is the disk full, or the folder read-only?\n",
               platform::SystemPath(path).c_str());
}

void ShowUnsaved(bool keysSaved, bool settingsSaved) {
  if ((keysSaved && settingsSaved) || !platform::HasDisplay()) return;
  Text names;
  if (!settingsSaved) names = u"qlm_conf.ini";
  if (!keysSaved) names += Join(names.empty() ? u"" : u", ", u"qlm_keycnf.dat");
  platform::MessageBox(
      platform::BoxIcon::kWarning, u"quillmarch",
      Join(names, u" cannot be written.", kCrLf, u"Is the disk full, or the folder read-only?"));
}

}  // namespace qlm
