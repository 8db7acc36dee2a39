#pragma once

#include <QPointer>
#include <QWidget>

namespace quorvane {

// A dark ring around the control of the window that has the focus, so that it is seen in the sun. Follows it.
class FocusRing : public QWidget {
 public:
  explicit FocusRing(QWidget* window);

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow(QWidget* widget);
  void Surround();

  QPointer<QWidget> around_;
};

}  // namespace quorvane
