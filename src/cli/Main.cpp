#include "cli/Tool.h"

int main(int argc, char** argv) { return vendrel::cli::RunTool(argc, argv); }
