#include <util/system.h>

#include <sys/select.h>
#include <sys/utsname.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <ctime>
#include <string>

namespace KORRti {

const char* DtOperatingSystem() {
  static const std::string name = [] {
    struct utsname info;
    return uname(&info) == 0 ? std::string(info.sysname) : std::string("Linux");
  }();
  return name.c_str();
}

int DtPollBlockingInputChar() {
  // On a terminal, look at single key presses rather than whole lines, for this poll only.
  bool terminal = isatty(STDIN_FILENO) == 1;
  struct termios saved;
  if (terminal && tcgetattr(STDIN_FILENO, &saved) == 0) {
    struct termios raw = saved;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    tcsetattr(STDIN_FILENO, TCSANOW, &raw);
  } else {
    terminal = false;
  }
  int key = 0;
  fd_set ready;
  FD_ZERO(&ready);
  FD_SET(STDIN_FILENO, &ready);
  struct timeval now = {0, 0};
  if (select(STDIN_FILENO + 1, &ready, nullptr, nullptr, &now) > 0) {
    unsigned char c = 0;
    if (read(STDIN_FILENO, &c, 1) == 1) key = c;
  }
  if (terminal) tcsetattr(STDIN_FILENO, TCSANOW, &saved);
  return key;
}

void DtSleep(double seconds) {
  if (!(seconds > 0)) return;
  struct timespec wanted;
  wanted.tv_sec = static_cast<time_t>(std::floor(seconds));
  wanted.tv_nsec = static_cast<long>((seconds - std::floor(seconds)) * 1e9);
  while (nanosleep(&wanted, &wanted) == -1 && errno == EINTR) {
  }
}

}  // namespace KORRti
