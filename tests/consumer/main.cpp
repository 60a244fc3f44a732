// Uses only the public, installed API of lytFilterParser.
#include <lytFilterParser/lytFilterParser.h>

#include <iostream>
#include <string>

int main() {
    int failures = 0;

    std::string err;
    LYTKovaRequest* r = LYTKovaRequest::getLYTKovaRequest("-f src 10.0.0.1 -k svc -v wb", err);
    if (r == nullptr) {
        std::cerr << "parse failed: " << err << "\n";
        return 1;
    }
    const std::string dumped = r->dump();
    std::cout << "dump:    [" << dumped << "]\n";
    const std::string expected = "-f src  10.0.0.1    -k svc acc=replace -v wb acc=rate ";
    if (dumped != expected) {
        std::cerr << "dump mismatch, expected [" << expected << "]\n";
        ++failures;
    }
    delete r;

    std::string convErr;
    const std::string converted = LYTKovaRequest::convert("-g topsrc -y b", convErr);
    std::cout << "convert: [" << converted << "]";
    if (!convErr.empty()) {
        std::cout << " (" << convErr << ")";
    }
    std::cout << "\n";
    if (converted.empty()) {
        std::cerr << "convert returned an empty string\n";
        ++failures;
    }

    return failures == 0 ? 0 : 1;
}
