// The bar of what takes as long as it takes: a part of it glides to and fro.
#pragma once

#include <QProgressBar>
#include <QVariantAnimation>

namespace corvane::qt {

class BusyBar final : public QProgressBar {
  Q_OBJECT

 public:
  explicit BusyBar(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QVariantAnimation glide_;
};

}  // namespace corvane::qt
