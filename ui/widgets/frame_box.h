#pragma once

#include <QFrame>

#include "ui/widgets/form_design.h"

namespace quorvane {

// A frame with its caption along its upper edge.
class FrameBox : public QFrame {
 public:
  FrameBox(QWidget* parent, Look look);

  void SetCaption(const QString& caption);
  void SetColors(const QColor& back, const QColor& fore);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Look look_;
  QString caption_;
  QColor back_;
  QColor fore_;
};

}  // namespace quorvane
