cmake_policy(VERSION 3.25)
# cmake -DENTREE=file -DSORTIE=file.cpp -DNOM=Symbol -P embarque.cmake
# Writes a source that holds a file's bytes: `Symbol` and `TailleSymbol`.
file(READ "${ENTREE}" hexa HEX)
string(LENGTH "${hexa}" chiffres)
math(EXPR taille "${chiffres} / 2")
if(taille EQUAL 0)
  message(FATAL_ERROR "${ENTREE} is empty")
endif()
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," octets "${hexa}")
string(REPEAT "[^,]*,[^,]*,[^,]*,[^,]*," 5 vingt)
string(REGEX REPLACE "(${vingt})" "\\1\n" octets "${octets}")
file(WRITE "${SORTIE}" "#include <cstddef>

namespace fenlor {
extern const unsigned char ${NOM}[];
extern const std::size_t Taille${NOM};
const unsigned char ${NOM}[] = {
${octets}
};
const std::size_t Taille${NOM} = ${taille};
}  // namespace fenlor
")
