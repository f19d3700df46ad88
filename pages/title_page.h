#pragma once
// A page that shows only its title: the axes and curve pages until their
// fields are made.
#include "pages/settings_page.h"

namespace zel {

class CTitlePage final : public CSettingsPage {
 public:
  // The template holds one label whose id is `titleId`.
  CTitlePage(int titleId, int dialogId) : CSettingsPage(titleId, dialogId) {}

 private:
  void Fill() override {}
  void Write() override {}
};

}  // namespace zel
