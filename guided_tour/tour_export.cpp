// Save As with its three file types, and what the office suite shows of the files.
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QTest>

#include "guided_tour/tour.h"
#include "support/office_suite.h"

namespace {

constexpr int save_as_button = 3;

// The command ends when the file is written or cannot be.
void save_as(Tour& tour, const QString& type, const std::function<void()>& look = {}) {
  tour.in_dialog<QFileDialog>([&](QFileDialog& dialog) {
    tour.type_name(dialog, tour.work_file(QStringLiteral("cellar")));
    auto* types = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    tour.require(types != nullptr, QStringLiteral("the file dialog has a field for the type"));
    QTest::keyClicks(types, type);
    tour.require(types->currentText() == type, QStringLiteral("the type is chosen"));
    if (look) look();
    dialog.findChild<QWidget*>(QStringLiteral("fileNameEdit"))->setFocus();
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
  });
  tour.click_toolbar(save_as_button);
  tour.require(tour.window().Sts1[0]->text().isEmpty() && tour.window().Text1->text().isEmpty(),
               QStringLiteral("the export has come to its end"));
}

void picture_of_page(Tour& tour, const QString& pdf, const QString& page, const QString& name,
                     const QString& text) {
  const QString picture = tour.work_file(name);
  const QStringList arguments = {"-png", "-r", "60", "-singlefile", "-f", page, "-l", page};
  tour.require(
      QProcess::execute(QStringLiteral("pdftoppm"), arguments + QStringList{pdf, picture}) == 0,
      QStringLiteral("a page can be drawn"));
  tour.step_of_file(name, text, picture + QStringLiteral(".png"));
}

// The number of the first page with these heads.
QString page_with(const QString& pdf, const QString& heads) {
  QProcess reader;
  reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
  reader.waitForFinished();
  const QStringList pages = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\f');
  const auto is_wanted = [&](const QString& page) { return page.simplified().contains(heads); };
  return QString::number(std::find_if(pages.begin(), pages.end(), is_wanted) - pages.begin() + 1);
}

}  // namespace

void export_text(Tour& tour) {
  save_as(tour, QStringLiteral("*.txt"), [&tour] {
    tour.step(QStringLiteral("save-as"),
              QStringLiteral("Save As asks for a name and one of three types."));
  });
  tour.keep(tour.work_file(QStringLiteral("cellar.txt")));
}

void export_with_office(Tour& tour) {
  if (!OfficeSuite::installed()) {
    tour.tell(QStringLiteral("LibreOffice is not installed: no document, no spreadsheet."));
    return;
  }
  const OfficeSuite suite;
  const QString document = tour.work_file(QStringLiteral("cellar.doc"));
  const QString workbook = tour.work_file(QStringLiteral("cellar.xls"));
  const QString pdf = tour.work_file(QStringLiteral("cellar.pdf"));
  const auto to_pdf = [&](const QString& file) {
    tour.require(OfficeSuite::convert(file, "pdf", QFileInfo(file).path()),
                 QStringLiteral("the office suite opens ") + file);
  };

  tour.when([&tour] { return tour.window().PrgB1->value() > 0; },
            [&tour] {
              tour.step(QStringLiteral("exporting"),
                        QStringLiteral("The word processor writes; the window stays alive."));
            });
  save_as(tour, QStringLiteral("*.doc"));
  tour.keep(document);
  to_pdf(document);
  picture_of_page(tour, pdf, QStringLiteral("1"), QStringLiteral("document"),
                  QStringLiteral("The document's first page, opened again."));

  save_as(tour, QStringLiteral("*.xls"));
  tour.keep(workbook);
  to_pdf(workbook);
  picture_of_page(tour, pdf, QStringLiteral("1"), QStringLiteral("workbook"),
                  QStringLiteral("The workbook's first sheet: information and readings."));
  picture_of_page(tour, pdf, page_with(pdf, QStringLiteral("Number Date Time")),
                  QStringLiteral("workbook-times"),
                  QStringLiteral("Its second sheet: date and time in columns of their own."));
}
