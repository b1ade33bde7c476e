// What the volume table shows of one entry: its name, dressed by whether the volume is mounted, missing or a
// duplicate.
#pragma once

#include "options/PaneConnection.h"
#include "options/VolumeCatalogue.h"
#include "values/AttributedText.h"

namespace corvane {

class VolumeLabel {
 public:
  /// Both must outlive the label.
  VolumeLabel(const VolumeCatalogue& catalogue, const PaneConnection& pane)
      : catalogue_(catalogue), pane_(pane) {}

  [[nodiscard]] AttributedText labelOf(const Dictionary& entry) const;

 private:
  const VolumeCatalogue& catalogue_;
  const PaneConnection& pane_;
};

}  // namespace corvane
