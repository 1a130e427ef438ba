#include "cli/App.h"

int main(int argc, char** argv) { return cli::runCommandLine(argc, argv); }
