#include "store/definitions.h"

#include <array>
#include <cassert>
#include <cstring>

#include "store/dates.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::array<char, 200> Paires = [] {
  std::array<char, 200> table{};
  for (unsigned i = 0; i < 100; ++i) {
    table[2 * i] = static_cast<char>('0' + i / 10);
    table[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return table;
}();

// Writes the parts of a key one behind the other.
class Ecrivain {
 public:
  explicit Ecrivain(char* sortie) : m_debut(sortie), m_place(sortie) {}
  unsigned Taille() const { return static_cast<unsigned>(m_place - m_debut); }

  // Cut to n characters, blanks behind.
  Ecrivain& Texte(std::string_view texte, std::size_t n) {
    assert(n > 0 && n <= TailleCleMax);
    const std::size_t pris = texte.size() < n ? texte.size() : n;
    if (pris > 0) std::memcpy(m_place, texte.data(), pris);
    std::memset(m_place + pris, ' ', n - pris);
    m_place += n;
    return *this;
  }

  Ecrivain& Dix(u32 nombre) {
    Paire(nombre / 100000000);
    return Huit(nombre % 100000000);
  }

  // Year, month and day; a field out of its range pushes the end off.
  Ecrivain& Jours(u32 date) {
    if (Annee(date) > 9999 || Mois(date) > 99 || Jour(date) > 99) return Texte(StrSDate(date), 8);
    return Huit(Annee(date) * 10000 + Mois(date) * 100 + Jour(date));
  }

  // As "%d" prints it, zeroes in front up to the width.
  Ecrivain& Entier(i64 nombre, unsigned chiffresMinimum = 1) {
    assert(chiffresMinimum < 20);
    char chiffres[20];
    unsigned n = 0;
    u64 reste = static_cast<u64>(nombre < 0 ? -nombre : nombre);
    const unsigned signe = nombre < 0 ? 1 : 0;
    do {
      chiffres[n++] = static_cast<char>('0' + reste % 10);
      reste /= 10;
    } while (reste != 0 || n + signe < chiffresMinimum);
    if (signe) *m_place++ = '-';
    while (n > 0) *m_place++ = chiffres[--n];
    return *this;
  }

  // Eleven digits of a signed number that sort as it does.
  Ecrivain& Onze(i32 nombre) {
    *m_place++ = '0';
    return Dix(static_cast<u32>(nombre) ^ 0x80000000u);
  }

 private:
  void Paire(u32 nombre) {
    assert(nombre < 100);
    std::memcpy(m_place, &Paires[2 * nombre], 2);
    m_place += 2;
  }
  Ecrivain& Huit(u32 nombre) {
    const u32 haut = nombre / 10000, bas = nombre % 10000;
    Paire(haut / 100);
    Paire(haut % 100);
    Paire(bas / 100);
    Paire(bas % 100);
    return *this;
  }

  char* m_debut;
  char* m_place;
};

template <std::size_t N>
std::string_view Vue(const char (&champ)[N]) {
  return {champ, strnlen(champ, N)};
}

// The layouts, once each: `MakeXxx` and the composition from a record share them.

void ClePlan1(Ecrivain& e, std::string_view compte) { e.Texte(compte, 10); }
void ClePlan2(Ecrivain& e, std::string_view code, std::string_view compte) {
  e.Texte(code, 8).Texte(compte, 10);
}
void ClePlan3(Ecrivain& e, std::string_view rubrique, std::string_view compte) {
  e.Texte(rubrique, 3).Texte(compte, 10);
}
void ClePlan4(Ecrivain& e, int type, std::string_view compte) { e.Entier(type).Texte(compte, 10); }
void ClePlan5(Ecrivain& e, std::string_view designation, std::string_view compte) {
  e.Texte(designation, 20).Texte(compte, 10);
}

void CleRubriques1(Ecrivain& e, std::string_view rubrique) { e.Texte(rubrique, 3); }
void CleRubriques2(Ecrivain& e, int type, std::string_view rubrique) { e.Entier(type).Texte(rubrique, 3); }
void CleRubriques3(Ecrivain& e, std::string_view designation, std::string_view rubrique) {
  e.Texte(designation, 20).Texte(rubrique, 3);
}
void CleRubriques4(Ecrivain& e, int ligne, std::string_view rubrique) {
  char chiffres[16];
  Ecrivain nombre(chiffres);
  nombre.Entier(ligne, 2);
  e.Texte({chiffres, nombre.Taille()}, 3).Texte(rubrique, 3);
}

void CleBanques1(Ecrivain& e, std::string_view compte, u32 date) { e.Texte(compte, 10).Jours(date); }
void CleBanques2(Ecrivain& e, u32 date, std::string_view compte) { e.Jours(date).Texte(compte, 10); }
void CleBanques3(Ecrivain& e, int sens, std::string_view compte, u32 date) {
  e.Entier(sens).Texte(compte, 10).Jours(date);
}

// The journal's number is kept to its 16 bits, so that a key never outgrows TailleCleMax.
i32 NumeroCourt(unsigned journal) { return static_cast<u16>(journal); }

void CleJournal1(Ecrivain& e, unsigned journal, u32 date, u32 mouvement, u32 rang, std::string_view compte,
                 u32 ligne) {
  e.Entier(NumeroCourt(journal)).Jours(date).Dix(mouvement).Dix(rang).Texte(compte, 10).Dix(ligne);
}
void CleJournal2(Ecrivain& e, unsigned journal, std::string_view compte, u32 date, u32 mouvement, u32 rang,
                 u32 ligne) {
  e.Entier(NumeroCourt(journal)).Texte(compte, 10).Jours(date).Dix(mouvement).Dix(rang).Dix(ligne);
}
void CleJournal3(Ecrivain& e, std::string_view compte, u32 date, u32 mouvement, u32 rang, unsigned journal,
                 u32 ligne) {
  e.Texte(compte, 10).Jours(date).Dix(mouvement).Dix(rang).Entier(NumeroCourt(journal)).Dix(ligne);
}
void CleJournal4(Ecrivain& e, u32 date, std::string_view compte, u32 mouvement, u32 rang, unsigned journal,
                 u32 ligne) {
  e.Jours(date).Texte(compte, 10).Dix(mouvement).Dix(rang).Entier(NumeroCourt(journal)).Dix(ligne);
}
void CleJournal5(Ecrivain& e, u32 mouvement, u32 rang, unsigned journal, u32 ligne) {
  e.Dix(mouvement).Dix(rang).Entier(NumeroCourt(journal)).Dix(ligne);
}
void CleJournal6(Ecrivain& e, std::string_view piece, u32 lienId, u32 reserve, u32 mouvement, u32 rang,
                 unsigned journal, u32 ligne) {
  e.Texte(piece, 9).Dix(lienId).Dix(reserve).Dix(mouvement).Dix(rang).Entier(NumeroCourt(journal)).Dix(ligne);
}

void CleImmobilisations1(Ecrivain& e, u32 dateAchat, u32 numero) { e.Jours(dateAchat).Dix(numero); }
void CleImmobilisations2(Ecrivain& e, u32 numero) { e.Dix(numero); }
void CleAmortissements(Ecrivain& e, u32 numero, u32 annee) { e.Dix(numero).Entier(annee, 4); }

void CleRecette(Ecrivain& e, const RecetteLiee& r) { e.Entier(r.LienPoste, 5).Onze(r.LienA).Dix(r.LienB); }
void CleDepense(Ecrivain& e, const DepenseLiee& r) { e.Onze(r.LienA).Dix(r.LienB).Texte(Vue(r.Tiers), 9); }

unsigned ComposePlan(unsigned indice, const void* rec, char* sortie) {
  const Plan& r = *static_cast<const Plan*>(rec);
  Ecrivain e(sortie);
  switch (indice) {
    case 0:
      ClePlan1(e, Vue(r.Compte));
      break;
    case 1:
      ClePlan2(e, Vue(r.Code), Vue(r.Compte));
      break;
    case 2:
      ClePlan3(e, Vue(r.Rubrique), Vue(r.Compte));
      break;
    case 3:
      ClePlan4(e, r.Type, Vue(r.Compte));
      break;
    case 4:
      ClePlan5(e, Vue(r.Designation), Vue(r.Compte));
      break;
  }
  return e.Taille();
}

unsigned ComposeRubrique(unsigned indice, const void* rec, char* sortie) {
  const Rubrique& r = *static_cast<const Rubrique*>(rec);
  Ecrivain e(sortie);
  switch (indice) {
    case 0:
      CleRubriques1(e, Vue(r.Rubrique));
      break;
    case 1:
      CleRubriques2(e, r.TypeRubrique, Vue(r.Rubrique));
      break;
    case 2:
      CleRubriques3(e, Vue(r.Designation), Vue(r.Rubrique));
      break;
    case 3:
      CleRubriques4(e, r.Ligne, Vue(r.Rubrique));
      break;
  }
  return e.Taille();
}

unsigned ComposeBanque(unsigned indice, const void* rec, char* sortie) {
  const Banque& r = *static_cast<const Banque*>(rec);
  Ecrivain e(sortie);
  switch (indice) {
    case 0:
      CleBanques1(e, Vue(r.Compte), r.Date);
      break;
    case 1:
      CleBanques2(e, r.Date, Vue(r.Compte));
      break;
    case 2:
      CleBanques3(e, r.Sens, Vue(r.Compte), r.Date);
      break;
  }
  return e.Taille();
}

unsigned ComposeReleve(unsigned indice, const void* rec, char* sortie) {
  const OperationImportee& r = *static_cast<const OperationImportee*>(rec);
  Ecrivain e(sortie);
  if (indice == 0) CleBanques1(e, Vue(r.Compte), r.Date);
  return e.Taille();
}

unsigned ComposeJournal(unsigned indice, const void* rec, char* sortie) {
  const Line& r = *static_cast<const Line*>(rec);
  const unsigned journal = static_cast<u16>(r.Journal);
  const auto compte = [&] { return Vue(r.Compte); };
  Ecrivain e(sortie);
  switch (indice) {
    case 0:
      CleJournal1(e, journal, r.Date, r.Mouvement, r.Rang, compte(), r.Ligne);
      break;
    case 1:
      CleJournal2(e, journal, compte(), r.Date, r.Mouvement, r.Rang, r.Ligne);
      break;
    case 2:
      CleJournal3(e, compte(), r.DateLigne, r.Mouvement, r.Rang, journal, r.Ligne);
      break;
    case 3:
      CleJournal4(e, r.DateLigne, compte(), r.Mouvement, r.Rang, journal, r.Ligne);
      break;
    case 4:
      CleJournal5(e, r.Mouvement, r.Rang, journal, r.Ligne);
      break;
    case 5:
      CleJournal6(e, Vue(r.Piece), r.LienId, r.Reserve134, r.Mouvement, r.Rang, journal, r.Ligne);
      break;
  }
  return e.Taille();
}

unsigned ComposeImmobilisation(unsigned indice, const void* rec, char* sortie) {
  const Immobilisation& r = *static_cast<const Immobilisation*>(rec);
  Ecrivain e(sortie);
  switch (indice) {
    case 0:
      CleImmobilisations1(e, r.DateAchat, r.Numero);
      break;
    case 1:
      CleImmobilisations2(e, r.Numero);
      break;
  }
  return e.Taille();
}

unsigned ComposeAmortissement(unsigned indice, const void* rec, char* sortie) {
  const Amortissement& r = *static_cast<const Amortissement*>(rec);
  Ecrivain e(sortie);
  if (indice == 0) CleAmortissements(e, r.Numero, r.Annee);
  return e.Taille();
}

unsigned ComposeRecette(unsigned indice, const void* rec, char* sortie) {
  const RecetteLiee& r = *static_cast<const RecetteLiee*>(rec);
  Ecrivain e(sortie);
  switch (indice) {
    case 0:
      CleRecette(e.Dix(r.LienId), r);
      break;
    case 1:
      CleRecette(e.Jours(r.Date), r);
      break;
    case 2:
      CleRecette(e, r);
      break;
  }
  return e.Taille();
}

unsigned ComposeDepense(unsigned indice, const void* rec, char* sortie) {
  const DepenseLiee& r = *static_cast<const DepenseLiee*>(rec);
  Ecrivain e(sortie);
  switch (indice) {
    case 0:
      CleDepense(e, r);
      break;
    case 1:
      CleDepense(e.Jours(r.Date), r);
      break;
  }
  return e.Taille();
}

unsigned ComposeRien(unsigned, const void*, char*) { return 0; }

// clang-format off
constexpr DefinitionFichier Table[] = {
    // number, name, record, first key, keys, their lengths, doubles, of the practice, from the start, marker
    {FichierComptes, "COMPTES", sizeof(Plan), 69, 5, {11, 19, 14, 12, 31}, {}, false, true, 1, ComposePlan},
    {FichierJournal, "JOURNAL", sizeof(Line), 75, 6, {50, 50, 50, 50, 32, 61}, {}, false, true, 1,
     ComposeJournal},
    {FichierRubriques, "RUBRIQUE", sizeof(Rubrique), 82, 4, {4, 5, 24, 7}, {}, false, true, 1,
     ComposeRubrique},
    {FichierBanques, "BANQUE", sizeof(Banque), 87, 3, {23, 23, 24}, {true, true, true}, false, true, 1,
     ComposeBanque},
    {FichierImmo, "Immo", sizeof(Immobilisation), 93, 2, {18, 10}, {}, true, false, 4, ComposeImmobilisation},
    {FichierAmo, "Amo", sizeof(Amortissement), 96, 1, {14}, {}, true, false, 4, ComposeAmortissement},
    {FichierRecettes, "RECETTES", sizeof(RecetteLiee), 98, 3, {37, 35, 27}, {}, true, false, 1,
     ComposeRecette},
    {FichierDepenses, "DEPENSES", sizeof(DepenseLiee), 102, 2, {31, 39}, {}, true, false, 1,
     ComposeDepense},
    {FichierAuto, "AUTO", sizeof(EcrituresAuto), 0, 0, {}, {}, false, false, 4, ComposeRien},
    {FichierReleves, "RELEVES", sizeof(OperationImportee), 109, 1, {23}, {true}, false, false, 1,
     ComposeReleve},
};
// clang-format on

template <typename... Arguments, typename... Valeurs>
std::string Compose(void (*cle)(Ecrivain&, Arguments...), Valeurs... valeurs) {
  char sortie[TailleCleMax];
  Ecrivain e(sortie);
  cle(e, valeurs...);
  assert(e.Taille() <= TailleCleMax);
  return std::string(sortie, e.Taille());
}

}  // namespace

std::span<const DefinitionFichier> Definitions() { return Table; }

namespace {

/// Row and key index of each number: looked up at every key operation.
struct Annuaire {
  std::array<const DefinitionFichier*, 256> fichiers{};
  std::array<std::pair<const DefinitionFichier*, u8>, 256> cles{};

  Annuaire() {
    for (const DefinitionFichier& d : Table) {
      fichiers[d.numero] = &d;
      assert(d.premiereCle + d.nbCles <= 256);
      for (u8 i = 0; i < d.nbCles; ++i) cles[d.premiereCle + i] = {&d, i};
    }
  }
};

const Annuaire& Numeros() {
  static const Annuaire annuaire;
  return annuaire;
}

}  // namespace

const DefinitionFichier* DefinitionFichierNumero(u16 numFichier) {
  return numFichier < 256 ? Numeros().fichiers[numFichier] : nullptr;
}

const DefinitionFichier* DefinitionCle(u16 numCle, unsigned& indice) {
  if (numCle >= 256 || !Numeros().cles[numCle].first) return nullptr;
  indice = Numeros().cles[numCle].second;
  return Numeros().cles[numCle].first;
}

const DefinitionFichier* DefinitionNom(std::string_view nom) {
  for (const DefinitionFichier& d : Table) {
    if (CompareSansCasse(d.nom, nom) == 0) return &d;
  }
  return nullptr;
}

std::string MakePlanKey1(std::string_view compte) { return Compose(ClePlan1, compte); }
std::string MakePlanKey2(std::string_view code, std::string_view compte) {
  return Compose(ClePlan2, code, compte);
}
std::string MakePlanKey3(std::string_view rubrique, std::string_view compte) {
  return Compose(ClePlan3, rubrique, compte);
}
std::string MakePlanKey4(int type, std::string_view compte) { return Compose(ClePlan4, type, compte); }
std::string MakePlanKey5(std::string_view designation, std::string_view compte) {
  return Compose(ClePlan5, designation, compte);
}
std::string MakeRubriquesKey1(std::string_view rubrique) { return Compose(CleRubriques1, rubrique); }
std::string MakeRubriquesKey2(int type, std::string_view rubrique) {
  return Compose(CleRubriques2, type, rubrique);
}
std::string MakeRubriquesKey3(std::string_view designation, std::string_view rubrique) {
  return Compose(CleRubriques3, designation, rubrique);
}
std::string MakeRubriquesKey4(int ligne, std::string_view rubrique) {
  return Compose(CleRubriques4, ligne, rubrique);
}
std::string MakeBanquesKey1(std::string_view compte, u32 date) { return Compose(CleBanques1, compte, date); }
std::string MakeBanquesKey2(u32 date, std::string_view compte) { return Compose(CleBanques2, date, compte); }
std::string MakeBanquesKey3(int sens, std::string_view compte, u32 date) {
  return Compose(CleBanques3, sens, compte, date);
}
std::string MakeJournalKey1(unsigned journal, u32 date, u32 mouvement, u32 rang, std::string_view compte,
                            u32 ligne) {
  return Compose(CleJournal1, journal, date, mouvement, rang, compte, ligne);
}
std::string MakeJournalKey2(unsigned journal, std::string_view compte, u32 date, u32 mouvement, u32 rang,
                            u32 ligne) {
  return Compose(CleJournal2, journal, compte, date, mouvement, rang, ligne);
}
std::string MakeJournalKey3(std::string_view compte, u32 dateLigne, u32 mouvement, u32 rang, unsigned journal,
                            u32 ligne) {
  return Compose(CleJournal3, compte, dateLigne, mouvement, rang, journal, ligne);
}
std::string MakeJournalKey4(u32 dateLigne, std::string_view compte, u32 mouvement, u32 rang, unsigned journal,
                            u32 ligne) {
  return Compose(CleJournal4, dateLigne, compte, mouvement, rang, journal, ligne);
}
std::string MakeJournalKey5(u32 mouvement, u32 rang, unsigned journal, u32 ligne) {
  return Compose(CleJournal5, mouvement, rang, journal, ligne);
}
std::string MakeJournalKey6(std::string_view piece, u32 lienId, u32 reserve, u32 mouvement, u32 rang,
                            unsigned journal, u32 ligne) {
  return Compose(CleJournal6, piece, lienId, reserve, mouvement, rang, journal, ligne);
}
std::string MakeImmobilisationsKey1(u32 dateAchat, u32 numero) {
  return Compose(CleImmobilisations1, dateAchat, numero);
}
std::string MakeImmobilisationsKey2(u32 numero) { return Compose(CleImmobilisations2, numero); }
std::string MakeAmortissementsKey(u32 numero, u32 annee) { return Compose(CleAmortissements, numero, annee); }

}  // namespace fenlor
