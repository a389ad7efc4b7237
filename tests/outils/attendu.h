// Expected texts that stand in files beside their tests.
#pragma once

#include <string>

namespace fenlor::test {

/// Compares with `attendus`/NOM.txt beside the test of that source file (__FILE__); a missing expectation
/// fails. With FENLOR_ATTENDUS=ecrire in the environment the file is written anew instead.
void VerifieAttendu(const char* source, const std::string& nom, const std::string& obtenu);

}  // namespace fenlor::test
