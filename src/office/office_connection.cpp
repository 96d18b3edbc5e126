#include "office/office_connection.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <QUuid>

#include <algorithm>
#include <com/sun/star/bridge/BridgeFactory.hpp>
#include <com/sun/star/bridge/XBridge.hpp>
#include <com/sun/star/connection/Connector.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>
#include <signal.h>
#include <unistd.h>

#include "office/office_text.h"

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

const QString program_folder = QStringLiteral(OFFICE_PROGRAM);

constexpr int poll_interval_ms = 20;
// A first start makes the user's profile.
constexpr int start_limit_ms = 60'000;
// A process that hands its arguments to a running one ends at once; what is asked to end does so
// within this time.
constexpr int end_limit_ms = 5'000;
constexpr int hand_over_limit_ms = 500;
// What starts while the program ends is not killed at once: it would leave its own files behind.
constexpr int give_up_limit_ms = 3'000;

qint64 run_office(const QStringList& arguments) {
  QProcess process;
  process.setProgram(program_folder + QStringLiteral("/soffice"));
  // No start centre, no splash screen, no question about documents from a crash; and neither
  // "--headless" nor "--invisible", which would hide the windows that the user opens later.
  process.setArguments(arguments + QStringList{"--nodefault", "--nologo", "--norestore"});
  if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("SAL_USE_VCLPLUGIN"), QStringLiteral("svp"));
    process.setProcessEnvironment(environment);
  }
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  qint64 id = 0;
  if (!process.startDetached(&id)) throw AutomationError("the office suite cannot be started");
  return id;
}

// An ended process that nobody has asked about yet counts as ended.
bool alive(qint64 process) {
  if (kill(static_cast<pid_t>(process), 0) != 0) return false;
  QFile state(QStringLiteral("/proc/%1/stat").arg(process));
  if (!state.open(QIODevice::ReadOnly)) return true;
  const QByteArray line = state.readAll();
  return !line.mid(line.lastIndexOf(')')).startsWith(") Z");
}

bool wait_for_end(qint64 process, int milliseconds) {
  QElapsedTimer timer;
  timer.start();
  while (alive(process)) {
    if (timer.hasExpired(milliseconds)) return false;
    QThread::msleep(poll_interval_ms);
  }
  return true;
}

void dispose(const Reference<css::uno::XInterface>& object) {
  try {
    const Reference<css::lang::XComponent> component(object, UNO_QUERY);
    if (component.is()) component->dispose();
  } catch (const css::uno::Exception&) {
    // It has gone already.
  }
}

}  // namespace

std::shared_ptr<OfficeConnection> OfficeConnection::open(const Automation::GiveUp& give_up) {
  std::shared_ptr<OfficeConnection> connection(new OfficeConnection);
  try {
    rtl::Bootstrap::set("URE_BOOTSTRAP",
                        "vnd.sun.star.pathname:" + to_uno(program_folder) + "/fundamentalrc");
    connection->local_ = cppu::defaultBootstrap_InitialComponentContext();
    connection->launch();
    connection->connect(give_up);
  } catch (const css::uno::Exception&) {
    throw AutomationError("no connection to the office suite");
  }
  return connection;
}

// The name of the pipe cannot be guessed, and the office process lets only its own user use it.
void OfficeConnection::launch() {
  pipe_ = QStringLiteral("pipe,name=corvane_") + QUuid::createUuid().toString(QUuid::Id128);
  process_ = run_office({QStringLiteral("--accept=%1;urp;").arg(pipe_)});
}

void OfficeConnection::connect(const Automation::GiveUp& give_up) {
  QElapsedTimer timer;
  timer.start();
  int limit = start_limit_ms;
  while (!try_to_connect()) {
    // With nobody left who starts, only a process that took the pipe over can still answer.
    if (limit == start_limit_ms && !alive(process_)) {
      limit = static_cast<int>(timer.elapsed()) + end_limit_ms;
    }
    if (give_up()) limit = std::min(limit, static_cast<int>(timer.elapsed()) + give_up_limit_ms);
    if (timer.hasExpired(limit)) {
      // What has just been started for us has nothing of the user's in it yet.
      if (alive(process_)) kill(static_cast<pid_t>(process_), SIGTERM);
      QFile::remove(QStringLiteral("/tmp/OSL_PIPE_%1_%2").arg(getuid()).arg(pipe_.section('=', 1)));
      throw AutomationError("the office suite does not answer");
    }
    QThread::msleep(poll_interval_ms);
  }
  started_ = !wait_for_end(process_, hand_over_limit_ms);
  if (!give_up()) return;
  quit();
  throw AutomationError("given up");
}

bool OfficeConnection::try_to_connect() {
  try {
    const auto pipe = css::connection::Connector::create(local_)->connect(to_uno(pipe_));
    const auto bridge =
        css::bridge::BridgeFactory::create(local_)->createBridge({}, "urp", pipe, nullptr);
    bridge_ = bridge;
    office_.set(bridge->getInstance("StarOffice.ComponentContext"), UNO_QUERY_THROW);
    return true;
  } catch (const css::uno::Exception&) {
    // Nobody listens yet, or what listened is ending.
    dispose(bridge_);
    bridge_.clear();
    return false;
  }
}

Reference<css::uno::XInterface> OfficeConnection::create(const QString& service) const {
  return Reference<css::uno::XInterface>(
      office_->getServiceManager()->createInstanceWithContext(to_uno(service), office_),
      UNO_QUERY_THROW);
}

void OfficeConnection::quit() {
  if (!started_) return;
  const auto desktop = css::frame::Desktop::create(office_);
  if (desktop->getComponents()->createEnumeration()->hasMoreElements() ||
      desktop->getFrames()->hasElements()) {
    return;
  }
  try {
    desktop->terminate();
  } catch (const css::lang::DisposedException&) {
    // It was faster than its answer.
  }
  wait_for_end(process_, end_limit_ms);
}

bool OfficeConnection::office_alive() const {
  try {
    return office_.is() && office_->getServiceManager().is();
  } catch (const css::uno::Exception&) {
    return false;
  }
}

// The process that lives on shall not keep a door open that nobody will use again.
void OfficeConnection::withdraw_pipe() const {
  skip_on_error([this] {
    // Where the suite has ended meanwhile this starts it anew, and nobody would end it.
    const qint64 process = run_office({QStringLiteral("--unaccept=%1;urp;").arg(pipe_)});
    if (!wait_for_end(process, end_limit_ms)) kill(static_cast<pid_t>(process), SIGTERM);
  });
}

OfficeConnection::~OfficeConnection() {
  if (office_alive()) withdraw_pipe();
  office_.clear();
  dispose(bridge_);
  dispose(local_);
}
