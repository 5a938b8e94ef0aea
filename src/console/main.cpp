#include "console/Version.h"

int main() {
  return korvenal::console::doPrintVersion();
}
