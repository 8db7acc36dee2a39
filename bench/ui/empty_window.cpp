// The least that a Qt program with a window can be; with "--label" the window has a label, large as the
// console's clock, that counts ten times a second.

#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <string_view>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  window.resize(1280, 800);
  QTimer timer;
  if (argc > 1 && std::string_view(argv[1]) == "--label") {
    auto* label = new QLabel(&window);
    QFont font;
    font.setPixelSize(85);
    font.setBold(true);
    label->setFont(font);
    label->setGeometry(400, 10, 480, 128);
    label->setAlignment(Qt::AlignCenter);
    QObject::connect(&timer, &QTimer::timeout, &window, [label, tenths = 0]() mutable {
      label->setText(QString::number(++tenths / 10.0, 'f', 1));
    });
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(100);
  }
  window.show();
  return QApplication::exec();
}
