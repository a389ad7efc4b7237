#include "assets/dureetaux.h"

#include <algorithm>
#include <cassert>

#include "assets/amortissements.h"
#include "assets/textes.h"
#include "core/valeurs.h"

namespace fenlor {

namespace {

using Colonne = f64 TauxDegressif::*;

/// Row that holds exactly that value, -1 for none.
int RangeeDe(const std::vector<TauxDegressif>& table, Colonne colonne, f64 valeur) {
  const auto place = std::find_if(table.begin(), table.end(),
                                  [&](const TauxDegressif& rangee) { return rangee.*colonne == valeur; });
  return place == table.end() ? -1 : static_cast<int>(place - table.begin());
}

/// Last row whose value is not above; the first when there is none.
int RangeeAuPlus(const std::vector<TauxDegressif>& table, Colonne colonne, f64 valeur) {
  int rang = 0;
  for (std::size_t i = 0; i < table.size(); ++i)
    if (table[i].*colonne <= valeur) rang = static_cast<int>(i);
  return rang;
}

/// As an entry shows it; nothing is shown as the smallest figure that is not.
f64 Montre(f64 valeur) {
  constexpr f64 plusPetit = 0.01;
  const f64 arrondi = Arrondi2(valeur);
  return arrondi == 0 ? plusPetit : arrondi;
}

f64 Inverse(f64 valeur) { return Montre(100 / (valeur == 0 ? 100 : valeur)); }

std::string Format(const CFenlorApp& app, const TexteFixe& format, f64 valeur) {
  return TexteFormat(format, {FormatMontant(valeur, 2, app.Reglages.SeparateurDecimal())});
}

}  // namespace

std::vector<TauxDegressif> TableDegressive(const CFenlorApp& app, Date achat) {
  std::vector<TauxDegressif> table;
  TauxDegressif rangee{};
  for (u32 indice = 1; app.Magasin.ReadTauxDegressif(achat, indice, rangee); ++indice)
    table.push_back(rangee);
  assert(!table.empty());
  return table;
}

DureeEtTaux::DureeEtTaux(const CFenlorApp& app, Date achat, u8 type, u8 mode, f64 duree, f64 taux)
    : m_app(app),
      m_table(TableDegressive(app, achat)),
      m_type(type),
      m_mode(mode),
      m_duree(duree),
      m_taux(taux) {
  if (EnListes()) {
    m_rangDuree = std::max(0, RangeeDe(m_table, &TauxDegressif::Duree, duree));
    m_rangTaux = RangeeDe(m_table, &TauxDegressif::TauxAnnuel, taux);
    if (m_rangTaux < 0) m_rangTaux = m_rangDuree;
  }
  Active();
}

bool DureeEtTaux::EnListes() const { return m_type == Degressif; }
bool DureeEtTaux::ModesActifs() const { return m_type != Exceptionnel; }

f64 DureeEtTaux::Duree() const {
  return EnListes() ? m_table[static_cast<std::size_t>(m_rangDuree)].Duree : m_duree;
}
f64 DureeEtTaux::Taux() const {
  return EnListes() ? m_table[static_cast<std::size_t>(m_rangTaux)].TauxAnnuel : m_taux;
}

void DureeEtTaux::Active() {
  const bool modes = ModesActifs();
  // Of a degressive asset by rate the life may be chosen all the same.
  m_dureeActive = modes && (m_mode == ParDuree || EnListes());
  m_tauxActif = modes && m_mode == ParTaux;
}

void DureeEtTaux::ChangeDate(Date achat) {
  m_table = TableDegressive(m_app, achat);
  const int derniere = static_cast<int>(m_table.size()) - 1;
  m_rangDuree = std::min(m_rangDuree, derniere);
  m_rangTaux = std::min(m_rangTaux, derniere);
}

void DureeEtTaux::ChangeType(u8 type) {
  assert(type <= Exceptionnel);
  m_type = type;
  if (type == Exceptionnel) {
    m_duree = 1;
    m_taux = 100;
  } else if (type == Degressif) {
    ChoisitRangee(m_mode == ParDuree ? RangeeAuPlus(m_table, &TauxDegressif::Duree, m_duree)
                                     : RangeeAuPlus(m_table, &TauxDegressif::TauxAnnuel, m_taux));
  } else if (m_mode == ParDuree) {
    ChangeDuree(m_rangDuree < 0 ? m_duree : m_table[static_cast<std::size_t>(m_rangDuree)].Duree);
  } else {
    ChangeTaux(m_rangTaux < 0 ? m_taux : m_table[static_cast<std::size_t>(m_rangTaux)].TauxAnnuel);
  }
  Active();
}

void DureeEtTaux::ChangeMode(u8 mode) {
  if (!ModesActifs()) return;
  m_mode = mode;
  m_dureeActive = mode == ParDuree;
  m_tauxActif = mode == ParTaux;
}

void DureeEtTaux::ChangeDuree(f64 duree) {
  m_duree = Montre(duree);
  m_taux = Inverse(Arrondi2(duree));
}

void DureeEtTaux::ChangeTaux(f64 taux) {
  m_taux = Montre(taux);
  m_duree = Inverse(Arrondi2(taux));
}

void DureeEtTaux::ChoisitRangee(int rang) {
  assert(rang >= 0 && rang < static_cast<int>(m_table.size()));
  m_rangDuree = m_rangTaux = rang;
}

std::string TexteDuree(const CFenlorApp& app, f64 duree) { return Format(app, FormatDuree, duree); }
std::string TexteTaux(const CFenlorApp& app, f64 taux) { return Format(app, FormatTauxAnnuel, taux); }

}  // namespace fenlor
