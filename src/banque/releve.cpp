#include "banque/releve.h"

#include <algorithm>
#include <cassert>

#include "banque/relevecsv.h"
#include "banque/relevetexte.h"
#include "banque/textes.h"
#include "store/texte1252.h"

namespace fenlor {

const char* const MotsFormatReleve[6] = {"", "ofx", "camt", "qif", "cfonb", "csv"};

namespace {

bool CommenceComme(std::string_view texte, std::string_view debut) {
  return texte.size() >= debut.size() && CompareSansCasse(texte.substr(0, debut.size()), debut) == 0;
}

/// Digits of the bank's code behind the number of the record, which is as long as it has to be.
bool CommeCfonb(std::string_view texte) {
  const std::size_t fin = std::min(texte.find_first_of("\r\n"), texte.size());
  if (!texte.starts_with("01") && !texte.starts_with("04")) return false;
  if (fin < 100 || (fin > 240 && fin != texte.size())) return false;
  return std::all_of(texte.begin() + 2, texte.begin() + 7,
                     [](char c) { return (c >= '0' && c <= '9') || c == ' '; });
}

}  // namespace

Releve& LectureReleve::Compte(const std::string& compte, const std::string& monnaie) {
  const auto [place, neuf] = m_places.try_emplace({compte, monnaie}, comptes.size());
  assert(place->second <= comptes.size());
  if (neuf) comptes.push_back({compte, monnaie, {}, 0, {}});
  return comptes[place->second];
}

bool LectureReleve::Place(u32 rang) {
  if (operations < OperationsReleveMax) return true;
  Plainte(rang, PlainteTropOperations);
  return false;
}

void LectureReleve::Plainte(u32 rang, const TexteFixe& raison, std::initializer_list<std::string> arguments) {
  if (plaintes.size() < OperationsReleveMax) plaintes.push_back({rang, TexteFormat(raison, arguments)});
}

FormatReleve DevineFormat(std::string_view octets) {
  const std::string tete = EnUtf8(octets.substr(0, 16384), DevineJeu(octets.substr(0, 16384)));
  const std::size_t debut = tete.find_first_not_of(" \t\r\n");
  if (debut == std::string::npos) return FormatReleve::Inconnu;
  const std::string_view texte = std::string_view(tete).substr(debut);
  assert(!texte.empty());
  const std::string hautes = EnMajuscules(texte);
  const bool balise = texte.front() == '<';
  if (CommenceComme(texte, "OFXHEADER") || (balise && hautes.find("<OFX>") != std::string::npos) ||
      (balise && hautes.find("<?OFX") != std::string::npos))
    return FormatReleve::Ofx;
  if (balise &&
      (texte.find("BkToCstmrStmt") != std::string::npos || texte.find("camt.05") != std::string::npos))
    return FormatReleve::Camt;
  if (CommenceComme(texte, "!Type:") || CommenceComme(texte, "!Account") || CommenceComme(texte, "!Option:"))
    return FormatReleve::Qif;
  // Without the line that says so: a day, and the end of an operation on a line of its own.
  const bool jour = texte.size() > 1 && texte[0] == 'D' && texte[1] >= '0' && texte[1] <= '9';
  if (jour && (texte.find("\n^") != std::string::npos || texte.find("\r^") != std::string::npos))
    return FormatReleve::Qif;
  if (CommeCfonb(texte)) return FormatReleve::Cfonb;
  return FormatReleve::Csv;
}

LectureReleve LitReleve(std::string_view octets, FormatReleve format, const FormeCsv* forme) {
  LectureReleve lecture;
  lecture.format = format != FormatReleve::Inconnu ? format : DevineFormat(octets);
  if (octets.size() > TailleReleveMax) {
    lecture.Plainte(0, PlainteTaille, {std::to_string(TailleReleveMax >> 20)});
    return lecture;
  }
  switch (lecture.format) {
    case FormatReleve::Ofx:
      LitOfx(octets, lecture);
      break;
    case FormatReleve::Camt:
      LitCamt(octets, lecture);
      break;
    case FormatReleve::Qif:
      LitQif(octets, lecture);
      break;
    case FormatReleve::Cfonb:
      LitCfonb(octets, lecture);
      break;
    case FormatReleve::Csv:
      LitCsv(octets, forme ? *forme : ProposeCsv(octets), lecture);
      break;
    case FormatReleve::Inconnu:
      break;
  }
  if (lecture.operations == 0 && lecture.plaintes.empty()) lecture.Plainte(0, PlainteAucune);
  return lecture;
}

}  // namespace fenlor
