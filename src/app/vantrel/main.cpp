#include "start_up.h"

int main(int argc, char** argv) {
    return vantrel::Main(argc, argv);
}
