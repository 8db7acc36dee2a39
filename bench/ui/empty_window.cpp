// The least that a Qt program with a window can be; with "--words" it has a button, a caption and a menu, the
// least of each; with "--label" a label, large as the console's clock, that counts ten times a second.

#include <QApplication>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <string_view>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  window.resize(1280, 800);
  QTimer timer;
  const std::string_view option = argc > 1 ? argv[1] : "";
  if (option == "--words") {
    QApplication::setStyle(QStringLiteral("Fusion"));
    (new QPushButton(QStringLiteral("Start"), &window))->setGeometry(10, 100, 100, 40);
    (new QLabel(QStringLiteral("Race"), &window))->setGeometry(10, 50, 100, 40);
    auto* menu = new QMenuBar(&window);
    menu->addMenu(QStringLiteral("File"));
    menu->setGeometry(0, 0, 1280, 30);
  }
  if (option == "--label") {
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
