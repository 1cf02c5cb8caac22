#include "results/ui/resultslist.h"

#include "app/errorpolicy.h"
#include "app/programpaths.h"
#include "app/ui/formregistry.h"
#include "app/ui/mdiform1.h"
#include "compare/filelisting.h"
#include "compare/ui/pairview.h"
#include "platform/prompter.h"
#include "platform/runtimeerror.h"
#include "platform/textutil.h"
#include "platform/textfile.h"
#include "results/reportexport.h"
#include "results/resultsnavigation.h"
#include "results/ui/resultsmodel.h"
#include "results/ui/resultsview.h"
#include "sidebyside/ui/frmsidebyside.h"
#include "status/ui/walkprogressbar.h"

#include <filesystem>

#include <QCheckBox>
#include <QCloseEvent>
#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace pv {

namespace {
// The list shows progress at most this often while a compare appends to it.
constexpr qint64 kRepaintIntervalMs = 40;
} // namespace

ResultsList::ResultsList(QWidget* parent) : QWidget(parent) {
    setObjectName("ResultsList");
    setProperty("tag", QString());
    setWindowTitle("ResultsList");

    m_model = new ResultsModel(this);
    m_list = new ResultsView(this);
    m_list->setObjectName("List1");
    m_list->setModel(m_model);
    // A fixed-pitch font, so that the padded columns line up.
    // "Courier New" first; where it is not installed, the usual fixed-pitch faces.
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setFamilies(
        {"Courier New", "DejaVu Sans Mono", "Liberation Mono", "Courier", font.family()});
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    m_list->setFont(font);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);

    m_nextDifference = new QPushButton("Next Difference", this);
    m_nextDifference->setObjectName("NextDifference");
    m_print = new QPushButton("print", this);
    m_print->setObjectName("PrintButton");
    m_sideBySideButton = new QPushButton("Side by Side", this);
    m_sideBySideButton->setObjectName("SideBySide");
    m_sideBySideButton->setToolTip("Show the selected pair side by side (Enter, double-click)");
    m_progressBar = new QProgressBar(this);
    m_progressBar->setObjectName("ProgressBar1");
    m_progressBar->setTextVisible(false);
    m_progressBar->setRange(0, 100);
    m_progressBar->setValue(0);
    m_percentage = new QLineEdit(this);
    m_percentage->setObjectName("ProgressPercentage");
    m_percentage->setReadOnly(true);
    m_percentage->setMaximumWidth(90);

    m_saveReport = new QPushButton("Save Report...", this);
    m_saveReport->setObjectName("SaveReport");
    m_saveReport->setToolTip("Save the results as an HTML page or a CSV table");
    m_differencesOnly = new QCheckBox("Differences only", this);
    m_differencesOnly->setObjectName("DifferencesOnly");
    m_differencesOnly->setToolTip("Hide matched files and statistics; the list keeps every line");
    m_tree = new QTreeWidget(this);
    m_tree->setObjectName("ResultsTree");
    m_tree->setHeaderLabels({"Directory", "Diff", "Only 1", "Only 2"});
    m_tree->headerItem()->setToolTip(1, "files that differ, in the directory and below it");
    m_tree->headerItem()->setToolTip(2, "files only in directory 1");
    m_tree->headerItem()->setToolTip(3, "files only in directory 2");
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int column = 1; column < 4; ++column)
        m_tree->header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    m_tree->setToolTip("The compared directories, the latest compare first; "
                       "pick one to show its lines");
    m_model->setColours(ResultColours::fromPalette(m_list->palette()));

    m_buttons = new QHBoxLayout;
    m_buttons->addWidget(m_nextDifference);
    m_buttons->addWidget(m_print);
    m_buttons->addWidget(m_sideBySideButton);
    m_buttons->addWidget(m_saveReport);
    m_buttons->addWidget(m_progressBar, 1);
    m_buttons->addWidget(m_percentage);
    auto* top = new QHBoxLayout;
    top->addWidget(m_differencesOnly);
    top->addWidget(createLegend());
    top->addStretch(1);
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->addWidget(m_tree);
    split->addWidget(m_list);
    split->setStretchFactor(1, 3);
    split->setSizes({300, 600});
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(split, 1);
    layout->addLayout(m_buttons);
    m_walkProgress = new WalkProgressBar(this);
    layout->addWidget(m_walkProgress);
    resize(900, 460);

    // A selection made by code or by the keys raises the click as well; a mouse
    // click on the line already selected does too (one that moves the selection
    // has raised it through the move).
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { List1_Click(); });
    m_list->viewport()->installEventFilter(this);
    connect(m_list, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (index.row() == m_rowAtPress)
            List1_Click();
        m_rowAtPress = -1;
    });
    connect(m_nextDifference, &QPushButton::clicked, this, &ResultsList::NextDifference_Click);
    connect(m_print, &QPushButton::clicked, this, &ResultsList::PrintButton_Click);
    connect(m_saveReport, &QPushButton::clicked, this, &ResultsList::SaveReport_Click);
    connect(m_differencesOnly, &QCheckBox::toggled, this, &ResultsList::setDifferencesOnly);
    connect(m_tree, &QTreeWidget::itemExpanded, this, &ResultsList::fillTreeItem);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item)
            showTreeNodeLine(item->data(0, Qt::UserRole).toLongLong());
    });
    // The side-by-side window is opened on purpose only: the button, Enter or a
    // double-click (the click before it still compares with fc).
    connect(m_sideBySideButton, &QPushButton::clicked, this, &ResultsList::SideBySide_Click);
    connect(m_list, &QAbstractItemView::doubleClicked, this, &ResultsList::SideBySide_Click);
    m_list->installEventFilter(this); // Enter
    m_sincePaint.start();
}

ResultsList* ResultsList::instance(bool create) {
    for (QWidget* form : FormRegistry::openForms())
        if (auto* r = qobject_cast<ResultsList*>(form))
            return r;
    if (!create)
        return nullptr;
    auto* r = new ResultsList;
    r->setSingleCompare([](const std::string& f1, const std::string& d1, const std::string& f2,
                           const std::string& d2) {
        if (MDIForm1* frame = mainWindow())
            if (Pairview* window = frame->activeCompareWindow())
                dispatchCommand("ResultsList", [&] { window->compare_singles(f1, d1, f2, d2); });
    });
    r->setSideBySide([](const std::string& f1, const std::string& d1, const std::string& f2,
                        const std::string& d2) {
        dispatchCommand("Side by Side",
                        [&] { frmSideBySide::open(joinPath(d1, f1), joinPath(d2, f2)); });
    });
    r->setEditorLauncher([](const std::string& path) {
        if (MDIForm1* frame = mainWindow())
            frame->runEditor(path);
    });
    r->setListFilePath(joinPath(globals().paths.programDirectory, "PairviewList.txt"));
    if (MDIForm1* frame = mainWindow()) {
        frame->showChildInside(r, r->size());
    } else {
        FormRegistry::add(r);
        r->setAttribute(Qt::WA_DeleteOnClose);
    }
    return r;
}

void ResultsList::bringToFront() {
    auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget());
    QMdiArea* area = sub ? sub->mdiArea() : nullptr;
    if (!area) {
        QWidget::show();
        raise();
        activateWindow();
        return;
    }
    if (sub->isMinimized())
        sub->showNormal();
    sub->show();
    // Activating the window that is already active does not raise it.
    area->setActiveSubWindow(sub);
    sub->raise();
}

void ResultsList::closeEvent(QCloseEvent* event) {
    // A running compare writes here; it is asked to stop instead.
    if (Pairview::stopInsteadOfClosing()) {
        event->ignore();
        return;
    }
    QWidget::closeEvent(event);
}

void ResultsList::setCntl(std::string_view value) {
    // A compare that ends shows everything it wrote, its last line selected:
    // the last paint is made while the value is still "Process", so that the
    // selection compares nothing.
    const bool ending = m_cntl == "Process" && value != "Process";
    if (m_cntl != "Process" && value == "Process")
        m_entrySelection = -1;
    if (ending) {
        m_inEntries = false; // a compare that failed half-way ends its entries too
        paintNow();
    }
    m_cntl = value;
    if (m_cntl.empty() && !ending)
        paintNow();
    else if (ending)
        refreshTree(); // the tree is built once the compare has ended

}

void ResultsList::InitializeProgressBar1(long max) {
    if (max == 0)
        max = 200;
    m_progressMax = max;
    m_progressCount = 0;
    m_progressComplete = false;
    // The widgets follow at the next paint: a progress bar repaints itself at
    // once on every change, and a sub-directory run starts thousands of bars.
    m_progressChanged = true;
    if (m_cntl != "Process")
        paintNow();
}

void ResultsList::IncrementProgressBar1() {
    ++m_progressCount;
    // The widgets follow at the next paint; the count is exact at all times.
    if (m_sincePaint.elapsed() >= kRepaintIntervalMs)
        paintNow();
}

bool ResultsList::walkProgress(long done, long found) {
    return m_walkProgress->update(done, found);
}

void ResultsList::walkEnded() {
    m_walkProgress->finish();
}

void ResultsList::CompleteProgressBar1() {
    m_progressCount = m_progressMax;
    m_progressComplete = true;
    m_progressChanged = true;
    if (m_cntl != "Process")
        paintNow();
}

void ResultsList::initializeProgress(long max) {
    m_inEntries = true;
    InitializeProgressBar1(max);
}

void ResultsList::completeProgress() {
    m_inEntries = false;
    CompleteProgressBar1();
}

bool ResultsList::isEmpty() const {
    return m_model->lines().empty();
}

void ResultsList::addLine(std::string_view line) {
    m_model->append(line);
    if (m_inEntries)
        m_entryAdded = true;
}

void ResultsList::flush() const {
    m_model->publish();
    m_list->setLongestRow(m_model->lines().longest());
}

void ResultsList::paintNow() {
    flush();
    if (m_progressChanged) {
        m_progressBar->setVisible(true);
        if (m_progressBar->maximum() != static_cast<int>(m_progressMax))
            m_progressBar->setRange(0, static_cast<int>(m_progressMax));
        m_progressChanged = false;
    }
    if (m_progressMax >= 1) {
        long value = std::min(m_progressCount, m_progressMax);
        m_progressBar->setValue(static_cast<int>(value));
        if (m_progressComplete)
            m_percentage->setText("100");
        else if (value > 0)
            m_percentage->setText(
                QString::fromStdString(progressPercentText(value, m_progressMax)));
    }
    // While a compare runs, the line its last entry selected is selected (a
    // selection then starts no single compare); the list shows its end.
    if (m_cntl == "Process" && m_entrySelection >= 0) {
        const int row = m_model->rowOfLine(m_entrySelection);
        if (row >= 0)
            m_list->setCurrentIndex(m_model->index(row));
    }
    m_list->scrollToBottom();
    if (m_cntl != "Process")
        refreshTree();
    if (isVisible()) {
        m_list->viewport()->repaint();
        QWidget::repaint();
    }
    m_sincePaint.restart();
}

void ResultsList::repaint() {
    if (m_entryAdded && m_cntl == "Process")
        m_entrySelection = static_cast<int>(m_model->lines().size()) - 1;
    m_entryAdded = false;
    if (m_sincePaint.elapsed() >= kRepaintIntervalMs || m_cntl != "Process")
        paintNow();
}

const ResultLines& ResultsList::store() const {
    return m_model->lines();
}

std::vector<std::string> ResultsList::lines() const {
    return m_model->lines().toVector();
}

int ResultsList::lineCount() const {
    flush();
    return static_cast<int>(m_model->lines().size());
}

void ResultsList::selectLine(int index) {
    flush();
    if (index == selectedLine() && index >= 0)
        List1_Click(); // selecting the selected line clicks it again
    else if (index < 0)
        m_list->setCurrentIndex({});
    else // a line the list does not show: the next one it shows
        m_list->setCurrentIndex(m_model->index(
            std::min(m_model->rowAtOrAfter(index), m_model->rowCount() - 1)));
}

bool ResultsList::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            SideBySide_Click();
            return true;
        }
    }
    if (watched == m_list->viewport() && event->type() == QEvent::MouseButtonPress)
        m_rowAtPress = selectedLine();
    return QWidget::eventFilter(watched, event);
}

int ResultsList::selectedLine() const {
    const QModelIndex current = m_list->currentIndex();
    return current.isValid() ? static_cast<int>(m_model->lineOfRow(current.row())) : -1;
}

void ResultsList::setDifferencesOnly(bool on) {
    flush();
    const long selected = selectedLine();
    m_model->setDifferencesOnly(on);
    if (m_differencesOnly->isChecked() != on)
        m_differencesOnly->setChecked(on);
    // The selection stays on its line where that is still shown; the toggle
    // compares nothing.
    const int row = selected < 0 ? -1 : m_model->rowOfLine(selected);
    if (row >= 0) {
        const QSignalBlocker quiet(m_list->selectionModel());
        m_list->setCurrentIndex(m_model->index(row));
        m_list->scrollTo(m_model->index(row), QAbstractItemView::PositionAtCenter);
    }
    m_list->viewport()->update();
}

std::vector<long> ResultsList::shownLines() const {
    flush();
    std::vector<long> out;
    for (int row = 0; row < m_model->rowCount(); ++row)
        out.push_back(m_model->lineOfRow(row));
    return out;
}

void ResultsList::showTreeNodeLine(long line) {
    flush();
    const int row = m_model->rowAtOrAfter(line);
    if (row < m_model->rowCount())
        m_list->scrollTo(m_model->index(row), QAbstractItemView::PositionAtTop);
}

QWidget* ResultsList::createLegend() {
    auto* legend = new QWidget(this);
    legend->setObjectName("Legend");
    auto* row = new QHBoxLayout(legend);
    row->setContentsMargins(0, 0, 0, 0);
    const ResultColours colours = ResultColours::fromPalette(palette());
    const std::pair<const char*, QColor> keys[] = {
        {"different", colours.different},
        {"only in directory 1", colours.oneOnly},
        {"only in directory 2", colours.twoOnly},
        {"directory unmatched or unreadable", colours.directory}};
    for (const auto& [text, colour] : keys) {
        auto* label = new QLabel(text, legend);
        label->setAutoFillBackground(true);
        QPalette pal = label->palette();
        pal.setColor(QPalette::Window, colour);
        label->setPalette(pal);
        label->setMargin(2);
        row->addWidget(label);
    }
    return legend;
}

void ResultsList::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        m_model->setColours(ResultColours::fromPalette(m_list->palette()));
        m_treeLines = -1;
        refreshTree();
    }
    QWidget::changeEvent(event);
}

namespace {
// Where a tree item's node lives: its run and its index in the run.
constexpr int kRunRole = Qt::UserRole + 1;
constexpr int kNodeRole = Qt::UserRole + 2;
} // namespace

QTreeWidgetItem* ResultsList::treeItem(QTreeWidgetItem* parent, int run, int id) {
    const ResultsTreeNode& node = m_model->tree().runs()[size_t(run)].nodes[size_t(id)];
    auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tree);
    item->setText(0, QString::fromUtf8(node.name.data(), qsizetype(node.name.size())));
    item->setData(0, Qt::UserRole, qlonglong(node.line));
    item->setData(0, kRunRole, run);
    item->setData(0, kNodeRole, id);
    const DirectoryCounts& c = node.below;
    item->setText(1, QString::number(c.different));
    item->setText(2, QString::number(c.oneOnly));
    item->setText(3, QString::number(c.twoOnly));
    const ResultColours colours = ResultColours::fromPalette(m_list->palette());
    const QColor tint = node.mark != LineKind::Plain ? colours.of(node.mark)
                        : c.any()                    ? colours.different
                                                     : QColor();
    if (tint.isValid())
        for (int column = 0; column < 4; ++column)
            item->setBackground(column, tint);
    // Children are made when the item is first opened: a walk of thousands of
    // directories costs the end of the compare a few items only.
    if (!node.children.empty())
        item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    return item;
}

void ResultsList::fillTreeItem(QTreeWidgetItem* item) {
    if (item->childCount() > 0 || item->childIndicatorPolicy() != QTreeWidgetItem::ShowIndicator)
        return;
    const int run = item->data(0, kRunRole).toInt(), id = item->data(0, kNodeRole).toInt();
    for (int child : m_model->tree().runs()[size_t(run)].nodes[size_t(id)].children)
        treeItem(item, run, child);
    item->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
}

void ResultsList::refreshTree() {
    const ResultsTree& tree = m_model->tree();
    if (m_treeLines == m_model->lines().size())
        return;
    m_treeLines = m_model->lines().size();
    const QSignalBlocker quiet(m_tree);
    m_tree->clear();
    for (int run = int(tree.runs().size()) - 1; run >= 0; --run) {
        if (tree.runs()[size_t(run)].nodes.empty())
            continue;
        QTreeWidgetItem* top = treeItem(nullptr, run, 0);
        fillTreeItem(top);
        top->setExpanded(true);
    }
}

QString ResultsList::progressText() const {
    return m_percentage->text();
}

bool ResultsList::selectedPair(std::string& fileName, LineDirectories& dirs) const {
    int row = selectedLine();
    if (row < 0)
        return false;
    std::string_view line = store()[row];
    if (!lineNamesPair(line))
        return false;
    fileName = fileNameOfLine(line);
    dirs = directoriesOfLine(store(), row);
    return true;
}

void ResultsList::List1_Click() {
    if (m_cntl == "Process")
        return; // a compare is appending and selecting lines
    std::string fileName;
    LineDirectories dirs;
    if (selectedPair(fileName, dirs) && m_singleCompare)
        m_singleCompare(fileName, dirs.dir1, fileName, dirs.dir2);
}

void ResultsList::SideBySide_Click() {
    std::string fileName;
    LineDirectories dirs;
    if (selectedPair(fileName, dirs) && m_sideBySide)
        m_sideBySide(fileName, dirs.dir1, fileName, dirs.dir2);
}

void ResultsList::NextDifference_Click() {
    flush();
    NextDifference next = findNextDifference(store(), selectedLine());
    switch (next.kind) {
    case NextDifference::Kind::Found:
        selectLine(static_cast<int>(next.index));
        break;
    case NextDifference::Kind::NotFound:
        prompter().message("Not found");
        break;
    case NextDifference::Kind::Wrapped:
        selectLine(static_cast<int>(next.index));
        prompter().message("End of list. Reset search to position 1");
        break;
    }
}

void ResultsList::SaveReport_Click() {
    flush();
    const ResultsTree& tree = m_model->tree();
    LineRange range{0, store().size()};
    if (tree.runs().size() > 1) {
        switch (prompter().ask("Save only the latest compare run?\r\n"
                               "(No saves every run in the list.)",
                               "Save Report", MessageIcon::Question)) {
        case Answer::Yes: range = latestRun(store(), tree); break;
        case Answer::No: break;
        case Answer::Cancel: return;
        }
    }
    const std::string directory =
        std::filesystem::path(m_listFilePath).parent_path().string();
    std::optional<std::string> path = prompter().saveFileName(
        "Save Report", directory, "HTML page (*.html);;CSV table (*.csv)");
    if (!path || path->empty())
        return;
    const std::string extension = toUpper(std::filesystem::path(*path).extension().string());
    const bool csv = extension == ".CSV";
    if (extension.empty())
        *path += ".html";
    try {
        writeFileAtomic(*path, csv ? reportCsv(store(), range) : reportHtml(store(), range, tree));
    } catch (const RuntimeError& e) {
        prompter().message("Could not save the report " + *path + ":\r\n" + e.description(),
                           "Save Report", MessageIcon::Critical);
    }
}

void ResultsList::PrintButton_Click() {
    // Each step that fails is passed over and the next one runs.
    skipOnError([this] { paintNow(); });
    skipOnError([this] { writeFileAtomic(m_listFilePath, printListText(store())); });
    skipOnError([this] {
        if (m_runEditor)
            m_runEditor(m_listFilePath);
    });
}

} // namespace pv
