// The rival of bench_depart: an empty Qt window and nothing else.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow fenetre;
  fenetre.setWindowTitle(QStringLiteral("vide"));
  fenetre.resize(1180, 780);
  fenetre.show();
  return QApplication::exec();
}
