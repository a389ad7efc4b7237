#include "banque/relevecsv.h"

#include <algorithm>
#include <cassert>

#include "banque/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

using C = ColonneReleve;

/// Cells of one row from `place` on, which moves behind its end; false: a quote did not end.
bool Decoupe(std::string_view texte, char separateur, std::size_t& place, LigneCsv& ligne, u32& lignes) {
  assert(place < texte.size());
  ligne.cellules.assign(1, {});
  bool dedans = false, debut = true;
  const std::size_t depart = place;
  for (; place < texte.size(); ++place) {
    const char c = texte[place];
    std::string& cellule = ligne.cellules.back();
    if (place - depart > LigneReleveMax) return false;
    if (dedans) {
      if (c == '"' && place + 1 < texte.size() && texte[place + 1] == '"') {
        cellule.push_back('"');
        ++place;
      } else if (c == '"') {
        dedans = false;
      } else {
        lignes += c == '\n' || (c == '\r' && !texte.substr(place + 1).starts_with('\n'));
        cellule.push_back(c == '\n' || c == '\r' ? ' ' : c);
      }
    } else if (c == '"' && debut) {
      dedans = true;
      debut = false;
    } else if (c == separateur) {
      ligne.cellules.emplace_back();
      debut = true;
    } else if (c == '\n' || c == '\r') {
      break;
    } else if (debut) {
      cellule.push_back(c);
      debut = c == ' ';
    } else {
      // On to what ends the cell, in one go; a quote in its middle is one of its characters.
      const std::size_t reste = std::min(texte.size(), depart + LigneReleveMax + 1);
      std::size_t fin = place;
      while (fin < reste && texte[fin] != separateur && texte[fin] != '\n' && texte[fin] != '\r') ++fin;
      cellule.append(texte.substr(place, fin - place));
      place = fin - 1;
    }
  }
  return !dedans;
}

std::string Nu(const LigneCsv& ligne, int colonne) {
  if (colonne < 0 || static_cast<std::size_t>(colonne) >= ligne.cellules.size()) return {};
  return LibelleNet(ligne.cellules[static_cast<std::size_t>(colonne)]);
}

bool Vide(const LigneCsv& ligne) {
  return std::all_of(ligne.cellules.begin(), ligne.cellules.end(),
                     [](const std::string& cellule) { return LibelleNet(cellule).empty(); });
}

/// What a title says; the first that fits counts. Written as `LibelleNu` leaves them.
struct MotTitre {
  std::string_view mot;
  C colonne;
};
constexpr MotTitre MotsDeTitre[] = {{"DATEDEVALEUR", C::Valeur},
                                    {"DATEVAL", C::Valeur},
                                    {"VALEUR", C::Valeur},
                                    {"VALUEDATE", C::Valeur},
                                    {"DATE", C::Date},
                                    {"DEBIT", C::Debit},
                                    {"CREDIT", C::Credit},
                                    {"MONTANT", C::Montant},
                                    {"AMOUNT", C::Montant},
                                    {"SENS", C::Sens},
                                    {"DEVISE", C::Monnaie},
                                    {"MONNAIE", C::Monnaie},
                                    {"CURRENCY", C::Monnaie},
                                    {"REFERENCE", C::Reference},
                                    {"NUMERODOPERATION", C::Reference},
                                    {"NDOPERATION", C::Reference},
                                    {"IDENTIFIANT", C::Reference},
                                    {"LIBELLE", C::Libelle},
                                    {"NATUREDELOPERATION", C::Libelle},
                                    {"DESCRIPTION", C::Libelle},
                                    {"OPERATION", C::Libelle},
                                    {"LABEL", C::Libelle},
                                    {"PAYEE", C::Libelle},
                                    {"DETAIL", C::Detail},
                                    {"INFORMATIONS", C::Detail},
                                    {"COMPLEMENT", C::Detail},
                                    {"MEMO", C::Detail}};

/// The account that a row belongs to, and no other one's.
bool NommeCompte(const std::string& titre) {
  for (const std::string_view mot : {"COMPTE", "NUMERODECOMPTE", "NUMEROCOMPTE", "NDECOMPTE", "NCOMPTE",
                                     "IBAN", "ACCOUNT", "ACCOUNTNUM", "ACCOUNTNUMBER"})
    if (titre == mot) return true;
  return false;
}

/// Columns that a row of titles names; false for any other row. "DATE" means the first, "LIBELLE" may come
/// twice, and the second is a detail.
bool LitTitres(const LigneCsv& ligne, FormeCsv& forme) {
  forme.colonnes.fill(-1);
  for (std::size_t i = 0; i < ligne.cellules.size() && i < 100; ++i) {
    const std::string titre = LibelleNu(ligne.cellules[i]);
    if (titre.empty() || titre.size() > 40) continue;
    if (NommeCompte(titre) && forme[C::Compte] < 0) forme[C::Compte] = static_cast<int>(i);
    if (titre.starts_with("COMPTE") || titre.starts_with("ACCOUNT")) continue;
    const bool cote = titre == "DC" ||
                      (titre.find("DEBIT") != std::string::npos && titre.find("CREDIT") != std::string::npos);
    for (const auto& [mot, colonne] : MotsDeTitre) {
      const bool date = colonne == C::Date || colonne == C::Valeur;
      const bool dit = !date ? titre.find(mot) != std::string::npos
                             : titre.starts_with(mot) || (colonne == C::Date && titre.ends_with(mot));
      if (!dit && !cote) continue;
      C pour = cote ? C::Sens : colonne;
      if (forme[pour] >= 0 && pour == C::Libelle) pour = C::Detail;
      if (forme[pour] < 0) forme[pour] = static_cast<int>(i);
      break;
    }
  }
  return forme.Complete();
}

/// Titles of an amount that is split into two make a "Montant" beside them nothing to read.
void Departage(FormeCsv& forme) {
  if (forme[C::Debit] >= 0 && forme[C::Credit] >= 0)
    forme[C::Montant] = forme[C::Sens] = -1;
  else
    forme[C::Debit] = forme[C::Credit] = -1;
}

/// 'D' or 'C' for a cell that says on which side an amount is; 0 for any other.
char CoteDe(const std::string& cellule) {
  if (cellule == "-" || cellule == "+") return cellule == "-" ? 'D' : 'C';
  const std::string nu = LibelleNu(cellule);
  for (const std::string_view mot : {"D", "DB", "DBIT", "DEBIT"})
    if (nu == mot) return 'D';
  for (const std::string_view mot : {"C", "CR", "CRDT", "CREDIT"})
    if (nu == mot) return 'C';
  return 0;
}

/// Amounts without a sign have their side in a column of its own, whatever its title is.
void DevineSens(const std::vector<LigneCsv>& lignes, FormeCsv& forme) {
  if (forme[C::Montant] < 0 || forme[C::Sens] >= 0) return;
  std::vector<bool> cotes(100, true);
  bool ligneLue = false;
  for (const LigneCsv& ligne : lignes) {
    const auto montant = LitCentimes(Nu(ligne, forme[C::Montant]), forme.decimale);
    if (ligne.rang <= forme.entete || !montant || !LitJour(Nu(ligne, forme[C::Date]), forme.ordre)) continue;
    if (*montant < 0) return;
    ligneLue = true;
    for (std::size_t i = 0; i < cotes.size(); ++i)
      cotes[i] = cotes[i] && CoteDe(Nu(ligne, static_cast<int>(i))) != 0;
  }
  const auto sens = std::find(cotes.begin(), cotes.end(), true);
  if (ligneLue && sens != cotes.end()) forme[C::Sens] = static_cast<int>(sens - cotes.begin());
}

bool EstJour(const std::string& texte) {
  return LitJour(texte, OrdreDate::JourMoisAnnee) || LitJour(texte, OrdreDate::AnneeMoisJour) ||
         LitJour(texte, OrdreDate::MoisJourAnnee);
}

bool EstMontant(const std::string& texte) { return LitCentimes(texte, ',') || LitCentimes(texte, '.'); }

/// Whether no row has an amount in both columns: they are the two sides of one.
bool SeRelaient(const std::vector<LigneCsv>& lignes, int a, int b) {
  return std::none_of(lignes.begin(), lignes.end(), [&](const LigneCsv& ligne) {
    const auto rempli = [&](int colonne) {
      const std::string texte = Nu(ligne, colonne);
      return EstMontant(texte) && texte.find_first_of("123456789") != std::string::npos;
    };
    return rempli(a) && rempli(b);
  });
}

/// By the rows that bear a date: the first date, the first amount or the two sides of it, the longest text.
bool DevineColonnes(std::vector<LigneCsv> lignes, FormeCsv& forme) {
  std::erase_if(lignes, [](const LigneCsv& ligne) {
    return std::none_of(ligne.cellules.begin(), ligne.cellules.end(),
                        [](const std::string& cellule) { return EstJour(LibelleNet(cellule)); });
  });
  std::size_t colonnes = 0;
  for (const LigneCsv& ligne : lignes)
    colonnes = std::max(colonnes, std::min<std::size_t>(ligne.cellules.size(), 100));
  std::vector<std::size_t> jours(colonnes), montants(colonnes), lettres(colonnes);
  for (const LigneCsv& ligne : lignes) {
    for (std::size_t i = 0; i < std::min(colonnes, ligne.cellules.size()); ++i) {
      const std::string texte = LibelleNet(ligne.cellules[i]);
      const bool jour = EstJour(texte);
      jours[i] += jour;
      const bool centimes = texte.find_first_of(".,") != std::string::npos || texte.starts_with("-");
      montants[i] += !jour && centimes && EstMontant(texte);
      if (!jour && !EstMontant(texte)) lettres[i] += texte.size();
    }
  }
  forme.colonnes.fill(-1);
  std::vector<int> sommes;
  for (std::size_t i = 0; i < colonnes; ++i) {
    const int colonne = static_cast<int>(i);
    if (jours[i] * 2 > lignes.size() && forme[C::Date] < 0)
      forme[C::Date] = colonne;
    else if (jours[i] * 2 > lignes.size() && forme[C::Valeur] < 0)
      forme[C::Valeur] = colonne;
    else if (montants[i] > 0 && lettres[i] == 0)
      sommes.push_back(colonne);
  }
  const auto longue = std::max_element(lettres.begin(), lettres.end());
  if (longue != lettres.end() && *longue > 0) forme[C::Libelle] = static_cast<int>(longue - lettres.begin());
  if (sommes.size() == 1) forme[C::Montant] = sommes[0];
  if (sommes.size() > 1) {
    assert(sommes[0] < sommes[1]);
    if (SeRelaient(lignes, sommes[0], sommes[1])) {
      forme[C::Debit] = sommes[0];
      forme[C::Credit] = sommes[1];
    } else {
      forme[C::Montant] = sommes[0];  // the other one is a balance
    }
  }
  return forme.Complete();
}

/// Titles that name no label: the longest text that is nothing else.
void PrendLibelle(const std::vector<LigneCsv>& lignes, FormeCsv& forme) {
  FormeCsv devinee;
  const auto operations = std::find_if(lignes.begin(), lignes.end(),
                                       [&](const LigneCsv& ligne) { return ligne.rang > forme.entete; });
  DevineColonnes({operations, lignes.end()}, devinee);
  const auto& prises = forme.colonnes;
  if (std::find(prises.begin(), prises.end(), devinee[C::Libelle]) == prises.end())
    forme[C::Libelle] = devinee[C::Libelle];
}

/// Order of dates and decimal sign that read most of the rows; the French ones before others. And where the
/// side of an amount is.
void DevineEcritures(const std::vector<LigneCsv>& lignes, FormeCsv& forme) {
  std::size_t virgules = 0, points = 0, debits = 0, negatifs = 0;
  std::vector<std::string> jours;
  const int colonnes[] = {forme[C::Montant], forme[C::Debit], forme[C::Credit]};
  for (const LigneCsv& ligne : lignes) {
    if (ligne.rang <= forme.entete) continue;
    jours.push_back(Nu(ligne, forme[C::Date]));
    for (const int colonne : colonnes) {
      const std::string texte = Nu(ligne, colonne);
      virgules += !texte.empty() && LitCentimes(texte, ',') && texte.find(',') != std::string::npos;
      points += !texte.empty() && LitCentimes(texte, '.') && texte.find('.') != std::string::npos;
    }
  }
  forme.ordre = OrdreDes(jours);
  forme.decimale = points > virgules ? '.' : ',';
  assert(forme.ordre <= OrdreDate::MoisJourAnnee);
  for (const LigneCsv& ligne : lignes) {
    if (ligne.rang <= forme.entete) continue;
    const auto debit = LitCentimes(Nu(ligne, forme[C::Debit]), forme.decimale);
    debits += debit && *debit != 0;
    negatifs += debit && *debit < 0;
  }
  forme.inverse = negatifs * 2 > debits;
  DevineSens(lignes, forme);
}

std::vector<LigneCsv> Lignes(std::string_view texte, char separateur, std::size_t nombre) {
  std::vector<LigneCsv> lignes;
  ParcoursCsv(texte, separateur, [&](const LigneCsv& ligne) {
    lignes.push_back(ligne);
    return lignes.size() < nombre;
  });
  return lignes;
}

/// The separator that cuts most rows into the same number of cells.
char DevineSeparateur(std::string_view texte) {
  char meilleur = ';';
  std::size_t note = 0;
  for (const char separateur : {';', '\t', ',', '|'}) {
    std::vector<std::size_t> nombres(101);
    for (const LigneCsv& ligne : Lignes(texte, separateur, 100))
      ++nombres[std::min<std::size_t>(ligne.cellules.size(), 100)];
    std::size_t lignes = 0;
    // Two cells are the least: any row with a comma has as many.
    for (std::size_t n = 3; n <= 100; ++n) lignes = std::max(lignes, 100 * nombres[n]);
    lignes = std::max(lignes, nombres[2]);
    if (lignes > note) {
      note = lignes;
      meilleur = separateur;
    }
  }
  return meilleur;
}

constexpr std::size_t LignesVues = 400, OctetsVus = 1u << 20;
constexpr int TitresMax = 0x7FFFFFF;

std::string Debut(std::string_view octets, JeuTexte jeu) {
  return EnWindows1252(EnUtf8(octets.substr(0, OctetsVus), jeu));
}

/// Rows before the first that bears a date and stands behind the titles, if there are any.
u32 Entete(const std::vector<LigneCsv>& lignes, const FormeCsv& forme) {
  for (std::size_t i = 0; i < lignes.size() && i < 60; ++i) {
    FormeCsv titres;
    if (LitTitres(lignes[i], titres)) return lignes[i].rang;
  }
  for (const LigneCsv& ligne : lignes)
    if (LitJour(Nu(ligne, forme[C::Date]), forme.ordre)) return ligne.rang - 1;
  return 0;
}

/// The currency that a title or a label names; empty without one.
std::string MonnaieDite(const std::string& texte) {
  const std::string nu = LibelleNu(texte);
  if (nu.find("FRANC") != std::string::npos || nu.find("FRF") != std::string::npos) return "FRF";
  return nu.find("EUR") != std::string::npos ? "EUR" : "";
}

class LecteurCsv {
 public:
  /// `titres`: the row in front of the operations.
  LecteurCsv(const FormeCsv& forme, const LigneCsv& titres, LectureReleve& lecture)
      : m_forme(forme), m_lecture(lecture) {
    for (const C colonne : {C::Montant, C::Credit})
      if (m_monnaie.empty()) m_monnaie = MonnaieDite(Nu(titres, forme[colonne]));
  }

  void Ligne(const LigneCsv& ligne) {
    if (Vide(ligne)) return;
    if (!ligne.tropLongue && ligne.rang <= m_forme.entete) return Avant(ligne);
    if (ligne.tropLongue) return m_lecture.Plainte(ligne.rang, PlainteLigneLongue);
    OperationBanque operation;
    operation.rang = ligne.rang;
    const std::string date = Nu(ligne, m_forme[C::Date]);
    operation.date = LitJour(date, m_forme.ordre);
    if (operation.date == 0) {
      if (!Solde(ligne)) m_lecture.Plainte(ligne.rang, PlainteDate, {date});
      return;
    }
    if (EstSolde(LibelleNu(Nu(ligne, m_forme[C::Libelle])))) {
      if (!Solde(ligne)) m_lecture.Plainte(ligne.rang, PlainteSoldeInitial);
      return;
    }
    operation.dateValeur = LitJour(Nu(ligne, m_forme[C::Valeur]), m_forme.ordre);
    const auto centimes = Montant(ligne);
    assert(operation.date != 0);
    if (!centimes) return;
    operation.libelle = LibelleDe({Nu(ligne, m_forme[C::Libelle]), Nu(ligne, m_forme[C::Detail])});
    operation.id = Nu(ligne, m_forme[C::Reference]);
    const std::string monnaie = Nu(ligne, m_forme[C::Monnaie]);
    operation.monnaie = EnMajuscules(monnaie);
    if (!m_lecture.Place(ligne.rang)) return;
    AjouteOperation(m_lecture, Sien(ligne), std::move(operation), *centimes);
  }

  /// A balance that stands apart is that of the only account of the rows.
  void Termine() {
    std::vector<Releve>& comptes = m_lecture.comptes;
    if (m_forme[C::Compte] < 0 || comptes.size() != 2) return;
    const std::size_t apart = comptes[0].operations.empty() ? 0 : 1;
    if (!comptes[apart].operations.empty() || comptes[apart].compte != m_compte) return;
    Releve& autre = comptes[1 - apart];
    if (!autre.solde) {
      autre.solde = comptes[apart].solde;
      autre.dateSolde = comptes[apart].dateSolde;
    }
    comptes.erase(comptes.begin() + static_cast<std::ptrdiff_t>(apart));
  }

 private:
  Releve& Sien(const LigneCsv& ligne) {
    const std::string dit = Nu(ligne, m_forme[C::Compte]);
    const bool numero = dit.find_first_of("0123456789") != std::string::npos;
    return m_lecture.Compte(numero ? dit : m_compte, m_monnaie);
  }

  /// Above 0: in. An empty cell of two columns is nothing; both filled are one amount when one is 0.
  std::optional<i64> Montant(const LigneCsv& ligne) {
    const auto refuse = [&](const std::string& texte) {
      m_lecture.Plainte(ligne.rang, PlainteMontant, {texte});
      return std::nullopt;
    };
    const auto lit = [&](const std::string& texte) -> std::optional<i64> {
      return texte.empty() || texte == "-" ? std::optional<i64>(0) : LitCentimes(texte, m_forme.decimale);
    };
    if (m_forme[C::Montant] >= 0) {
      const std::string texte = Nu(ligne, m_forme[C::Montant]), cote = Nu(ligne, m_forme[C::Sens]);
      const auto montant = lit(texte);
      if (!montant || texte.empty()) return refuse(texte);
      if (m_forme[C::Sens] < 0) return m_forme.inverse ? -*montant : *montant;
      const std::string nu = LibelleNu(cote);
      const char sens = CoteDe(cote) ? CoteDe(cote) : nu.empty() ? '\0' : nu[0];
      if (sens != 'C' && sens != 'D') return refuse(texte + ' ' + cote);
      const i64 valeur = *montant < 0 && sens == 'D' ? -*montant : *montant;
      return sens == 'D' ? -valeur : valeur;
    }
    const std::string moins = Nu(ligne, m_forme[C::Debit]), plus = Nu(ligne, m_forme[C::Credit]);
    const auto debit = lit(moins), credit = lit(plus);
    if (!debit || !credit || (*debit != 0 && *credit != 0)) return refuse(moins + ' ' + plus);
    if (*credit != 0) return *credit;
    return m_forme.inverse ? *debit : -*debit;
  }

  /// Whether a label is that of a balance among the operations; "SOLDE FACTURE 12" is none.
  static bool EstSolde(const std::string& nu) {
    if (DAvant(nu)) return true;
    for (const std::string_view mot :
         {"SOLDE", "NOUVEAUSOLDE", "SOLDEFINAL", "SOLDECREDITEUR", "SOLDEDEBITEUR"})
      if (nu == mot || (nu.starts_with(mot) && nu.substr(mot.size()).starts_with("AU") &&
                        nu.find_first_of("0123456789") == mot.size() + 2))
        return true;
    return false;
  }
  /// That before the operations is not the one that the statement ends with.
  static bool DAvant(const std::string& nu) {
    for (const std::string_view mot : {"SOLDEPRECEDENT", "SOLDEINITIAL", "ANCIENSOLDE", "OPENINGBALANCE"})
      if (nu.starts_with(mot)) return true;
    return false;
  }

  /// "Solde au 31/03/2003 ; 1 234,56" above, among or below the operations: the latest one counts.
  bool Solde(const LigneCsv& ligne) {
    bool solde = false, debiteur = false;
    Date date = 0;
    std::string monnaie;
    std::optional<i64> montant;
    for (std::size_t colonne = 0; colonne < ligne.cellules.size(); ++colonne) {
      const std::string cellule = LibelleNet(ligne.cellules[colonne]), nu = LibelleNu(cellule);
      if (cellule.empty()) continue;
      if (DAvant(nu)) return false;
      if (nu.starts_with("SOLDE") || nu.starts_with("NOUVEAUSOLDE")) {
        solde = true;
        debiteur = debiteur || nu.find("DEBITEUR") != std::string::npos;
        monnaie = MonnaieDite(cellule);
        for (std::size_t i = 0; i + 1 < 10 && date == 0; ++i)
          if (const std::string mot = ChampTexte(static_cast<unsigned>(i), cellule, ' '); !mot.empty())
            date = LitJour(mot, m_forme.ordre);
      } else if (const Date jour = LitJour(cellule, m_forme.ordre)) {
        date = jour;
      } else if (const auto centimes = LitCentimes(cellule, m_forme.decimale)) {
        montant = centimes;
        debiteur = debiteur || static_cast<int>(colonne) == m_forme[C::Debit];
      }
    }
    if (!solde || !montant) return false;
    if (debiteur && *montant > 0) montant = -*montant;
    Releve& releve = Sien(LigneCsv{});
    if (date == 0) date = m_dateAvant;
    // Two currencies side by side: the one of the amounts, else the first.
    const bool autre = !monnaie.empty() && monnaie != m_monnaie;
    if (autre && (releve.solde || !m_monnaie.empty())) return true;
    if (date >= releve.dateSolde) {
      releve.solde = montant;
      releve.dateSolde = date;
    }
    return true;
  }

  void Avant(const LigneCsv& ligne) {
    if (Solde(ligne)) return;
    if (LibelleNu(Nu(ligne, 0)) == "DATE") m_dateAvant = LitJour(Nu(ligne, 1), m_forme.ordre);
    for (std::size_t i = 0; i < ligne.cellules.size() && m_compte.empty(); ++i) {
      const std::string mot = LibelleNu(ligne.cellules[i]);
      if (!mot.starts_with("IBAN") && !mot.starts_with("NUMERODECOMPTE") &&
          !mot.starts_with("NUMEROCOMPTE") && mot.find("COMPTEN") == std::string::npos)
        continue;
      const std::string cellule = LibelleNet(ligne.cellules[i]);
      const std::size_t deux = cellule.find(':');
      const std::string numero = deux != std::string::npos && deux + 1 < cellule.size()
                                     ? LibelleNet(std::string_view(cellule).substr(deux + 1))
                                     : Nu(ligne, static_cast<int>(i) + 1);
      if (numero.find_first_of("0123456789") != std::string::npos) m_compte = numero;
    }
  }

  const FormeCsv& m_forme;
  LectureReleve& m_lecture;
  std::string m_compte, m_monnaie;
  Date m_dateAvant = 0;  ///< above the titles, of a balance that has none beside it
};

}  // namespace

bool FormeCsv::Complete() const {
  const bool deux = (*this)[C::Debit] >= 0 && (*this)[C::Credit] >= 0;
  return (*this)[C::Date] >= 0 && ((*this)[C::Montant] >= 0 || deux);
}

void ParcoursCsv(std::string_view texte, char separateur, const std::function<bool(const LigneCsv&)>& suite) {
  u32 rang = 1;
  for (std::size_t place = 0; place < texte.size();) {
    LigneCsv ligne;
    ligne.rang = rang;
    const std::size_t debut = place;
    u32 dedans = 0;
    if (!Decoupe(texte, separateur, place, ligne, dedans)) {
      dedans = 0;
      ligne.tropLongue = true;
      place = std::min(texte.find_first_of("\r\n", debut), texte.size());
      // Kept for the eye: its beginning.
      ligne.cellules.assign(1, std::string(texte.substr(debut, std::min<std::size_t>(place - debut, 200))));
    }
    assert(place >= debut);
    rang += dedans + 1;
    assert(!ligne.cellules.empty());
    if (place < texte.size()) place += texte.substr(place, 2) == "\r\n" ? 2 : 1;
    if (!suite(ligne)) return;
  }
}

std::vector<LigneCsv> PremieresLignes(std::string_view octets, const FormeCsv& forme, std::size_t nombre) {
  return Lignes(Debut(octets, forme.jeu), forme.separateur, nombre);
}

FormeCsv ProposeColonnes(std::string_view octets, JeuTexte jeu, char separateur) {
  FormeCsv forme;
  forme.jeu = jeu;
  forme.separateur = separateur;
  const std::vector<LigneCsv> lignes = PremieresLignes(octets, forme, LignesVues);
  bool titres = false;
  for (std::size_t i = 0; i < lignes.size() && i < 60 && !titres; ++i) {
    titres = LitTitres(lignes[i], forme);
    if (titres) forme.entete = lignes[i].rang;
  }
  if (!titres) DevineColonnes(lignes, forme);
  if (titres && forme[C::Libelle] < 0) PrendLibelle(lignes, forme);
  Departage(forme);
  DevineEcritures(lignes, forme);
  if (!titres) forme.entete = Entete(lignes, forme);
  forme.titres = EmpreinteTitres(octets, forme);
  return forme;
}

FormeCsv ProposeCsv(std::string_view octets) {
  const JeuTexte jeu = DevineJeu(octets);
  return ProposeColonnes(octets, jeu, DevineSeparateur(Debut(octets, jeu)));
}

u32 EmpreinteTitres(std::string_view octets, const FormeCsv& forme) {
  for (const LigneCsv& ligne : PremieresLignes(octets, forme, LignesVues)) {
    FormeCsv lus;
    if (ligne.rang != forme.entete || !LitTitres(ligne, lus)) continue;
    // Without figures: some titles bear a day.
    u32 nombre = 2166136261u;
    for (const std::string& cellule : ligne.cellules)
      for (const char c : LibelleNu(cellule))
        if (c >= 'A') nombre = (nombre ^ static_cast<unsigned char>(c)) * 16777619u;
    return std::max(nombre & TitresMax, 1u);
  }
  return 0;
}

FormeCsv FormePour(std::string_view octets, FormeCsv forme) {
  forme.jeu = DevineJeu(octets);
  forme.entete = Entete(PremieresLignes(octets, forme, LignesVues), forme);
  forme.titres = EmpreinteTitres(octets, forme);
  return forme;
}

std::string TexteForme(const FormeCsv& forme) {
  std::string texte = std::to_string(static_cast<int>(forme.jeu)) + '|' +
                      std::to_string(int{forme.separateur}) + '|' + std::to_string(int{forme.decimale}) +
                      '|' + std::to_string(static_cast<int>(forme.ordre)) + '|' + (forme.inverse ? "1" : "0");
  for (const int colonne : forme.colonnes) texte += '|' + std::to_string(colonne);
  return texte + '|' + std::to_string(forme.titres);
}

std::optional<FormeCsv> FormeDepuis(std::string_view texte) {
  // Earlier versions knew neither the column of the account nor the titles.
  const std::size_t parties = ComptePartie(texte, '|'), anciennes = 5 + NbColonnesReleve - 1;
  if (parties != anciennes && parties != anciennes + 2) return {};
  const auto nombre = [&](std::size_t i, int maximum) {
    const std::string champ = ChampTexte(static_cast<unsigned>(i), texte, '|');
    const int valeur = champ == "-1" ? -1 : TexteVersEntier(champ);
    return valeur <= maximum ? valeur : -1;
  };
  FormeCsv forme;
  forme.jeu = static_cast<JeuTexte>(std::max(nombre(0, 2), 0));
  forme.separateur = static_cast<char>(nombre(1, 127));
  forme.decimale = nombre(2, 127) == '.' ? '.' : ',';
  forme.ordre = static_cast<OrdreDate>(std::max(nombre(3, 2), 0));
  forme.inverse = nombre(4, 1) == 1;
  for (std::size_t i = 0; i < NbColonnesReleve && 5 + i < parties; ++i) forme.colonnes[i] = nombre(5 + i, 99);
  if (parties > anciennes) forme.titres = static_cast<u32>(std::max(nombre(anciennes + 1, TitresMax), 0));
  if (forme.separateur <= 0 || !forme.Complete()) return {};
  return forme;
}

void LitCsv(std::string_view octets, const FormeCsv& forme, LectureReleve& lecture) {
  if (!forme.Complete()) return lecture.Plainte(0, PlainteColonnes);
  const std::string texte = EnWindows1252(EnUtf8(octets, forme.jeu));
  LigneCsv titres;
  ParcoursCsv(texte, forme.separateur, [&](const LigneCsv& ligne) {
    if (ligne.rang == forme.entete) titres = ligne;
    return ligne.rang < forme.entete;
  });
  LecteurCsv lecteur(forme, titres, lecture);
  ParcoursCsv(texte, forme.separateur, [&](const LigneCsv& ligne) {
    lecteur.Ligne(ligne);
    return true;
  });
  lecteur.Termine();
}

}  // namespace fenlor
