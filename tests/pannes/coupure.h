// A practice on a disk whose power is cut: what is done to it until then, what its books must hold
// afterwards, and the tries with a cut and a fate of what was in flight.
#pragma once

#include <chrono>
#include <cmath>
#include <iostream>

#include "outils/systemecoupure.h"
#include "outils/systemesanssynchro.h"
#include "pannes/outils.h"
#include "store/definitions.h"

namespace fenlor::pannes {

struct Attendu {
  std::string libelle;
  f64 montant = 0;
  bool operator==(const Attendu&) const = default;
};
using Livres = std::map<u32, Attendu>;

/// Emptied often: its syncs come between all others. The shipped size leaves each sync alone with its task.
constexpr std::size_t ReprisePetite = 64 << 10;
inline const std::size_t RepriseLivree = OptionsQVAPI().tailleReprise;
/// Between the two: the large units leave the log for the tails of their files, whose syncs come alone.
constexpr std::size_t RepriseMoyenne = 3u << 20;

/// The practice on one disk, and what its books must hold.
class Machine {
 public:
  Machine(const std::string& cabinet, SystemeCoupure& systeme, std::size_t reprise = ReprisePetite)
      : m_cabinet(cabinet), m_systeme(systeme), m_reprise(reprise) {}
  /// What fails without a cut is told, and the story goes on.
  void Endure() { m_endure = true; }

  const Livres& Acquis() const { return m_acquis; }
  /// The books if the unit that was under way counts.
  const Livres& Possible() const { return m_possible; }
  bool Arrete() const { return m_arrete; }
  void Commence(Livres livres, EcrSimple modele) {
    m_acquis = m_possible = std::move(livres);
    m_modele = modele;
  }

  void Ouvre() {
    bool ouverte = false;
    for (int essai = 0; essai < 2 && !ouverte && !m_arrete; ++essai) {
      OptionsQVAPI options;
      options.systeme = &m_systeme;
      options.tailleReprise = m_reprise;
      m_magasin = std::make_unique<QVAPI>(options);
      QVAPI& m = *m_magasin;
      ouverte = m.QVOpenSession(1) && m.QVOpenCompta(m_cabinet, "") && m.QVOpenExercice("2003") &&
                m.OpenPlan("") && m.OpenJournal("");
      Note(ouverte);
    }
  }
  void Ferme() {
    if (!m_magasin) return;
    const bool bien = m_magasin->QVCloseSession();
    m_magasin.reset();
    Note(bien || m_arrete);
  }
  void Vidange() {
    if (!m_arrete) Note(m_magasin->QVFlush());
  }

  /// One durable unit: `travail` writes, and says in the books what it means.
  void Unite(const std::function<bool(Livres&)>& travail) {
    if (m_arrete) return;
    m_possible = m_acquis;
    QVAPI::Unite unite(*m_magasin);
    const bool faite = travail(m_possible) && unite.Valide();
    Note(faite);
    if (faite) m_acquis = m_possible;
  }
  void Ajoute(unsigned numero) {
    Unite([&](Livres& livres) { return AjouteUne(livres, numero); });
  }
  void AjouteBeaucoup(unsigned premier, unsigned nombre) {
    Unite([&](Livres& livres) {
      for (unsigned i = 0; i < nombre; ++i) {
        if (!AjouteUne(livres, premier + i)) return false;
      }
      return true;
    });
  }
  /// A large unit; what is brought home in its middle meets a sync that fails.
  void AjouteMalgreUneSynchro(u64 manquee, unsigned nombre) {
    Unite([&](Livres& livres) {
      for (unsigned i = 0; i < nombre; ++i)
        if (!AjouteUne(livres, 1000 + i)) return false;
      m_systeme.EchoueSynchro(manquee);
      EXPECT_FALSE(m_magasin->QVFlush());
      return true;
    });
  }
  void Change(unsigned rang, unsigned numero) {
    Unite([&](Livres& livres) {
      auto place = livres.begin();
      std::advance(place, rang % livres.size());
      EcrSimple rec = Ecriture(numero);
      rec.Mouvement = place->first;
      if (!m_magasin->UpdateEcrSimple(m_magasin->PathExercice(), place->first, rec)) return false;
      place->second = {LitTexte(rec.Libelle), rec.MontantEuro};
      return true;
    });
  }
  void Supprime(unsigned rang) {
    Unite([&](Livres& livres) {
      auto place = livres.begin();
      std::advance(place, rang % livres.size());
      if (!m_magasin->RemoveEcrSimple(m_magasin->PathExercice(), place->first)) return false;
      livres.erase(place);
      return true;
    });
  }
  /// A unit that is begun and given up: the books do not change.
  void Renonce(unsigned numero) {
    if (m_arrete) return;
    QVAPI::Unite unite(*m_magasin);
    Livres oubliees = m_acquis;
    AjouteUne(oubliees, numero);
  }
  /// A unit in which an inner one is undone.
  void AvecRenoncement(unsigned numero) {
    Unite([&](Livres& livres) {
      if (!AjouteUne(livres, numero)) return false;
      {
        QVAPI::Unite interieure(*m_magasin);
        Livres oubliees = livres;
        if (!AjouteUne(oubliees, numero + 1)) return false;
      }
      return AjouteUne(livres, numero + 2);
    });
  }

 private:
  void Note(bool bien) { m_arrete = m_arrete || (!bien && (!m_endure || m_systeme.EstCoupe())); }
  EcrSimple Ecriture(unsigned numero) const {
    EcrSimple rec = m_modele;
    rec.Mouvement = 0;
    rec.Ligne = numero;
    PoseTexte(rec.Libelle, "Piece " + std::to_string(numero));
    rec.MontantEuro = 100 + numero % 900;
    rec.RepartitionEuro = rec.MontantEuro - 10;
    rec.MontantFranc = rec.MontantEuro * 4;
    rec.RepartitionFranc = rec.RepartitionEuro * 4;
    return rec;
  }
  bool AjouteUne(Livres& livres, unsigned numero) {
    EcrSimple rec = Ecriture(numero);
    const u32 mouvement = m_magasin->AddEcrSimple(m_magasin->PathExercice(), rec);
    if (mouvement) livres[mouvement] = {LitTexte(rec.Libelle), rec.MontantEuro};
    return mouvement != 0;
  }

  std::string m_cabinet;
  SystemeCoupure& m_systeme;
  std::size_t m_reprise;
  bool m_endure = false;
  std::unique_ptr<QVAPI> m_magasin;
  Livres m_acquis, m_possible;
  EcrSimple m_modele{};
  bool m_arrete = false;
};

/// Every kind of save, with slots reused, the log filled and emptied, and the
/// practice closed in between.
inline void Histoire(Machine& m) {
  m.Ouvre();
  for (unsigned i = 0; i < 5; ++i) m.Ajoute(10 + i);
  m.Change(1, 20);
  m.Supprime(2);
  m.Renonce(30);
  m.Ajoute(31);
  m.AvecRenoncement(40);
  m.Vidange();
  m.Change(3, 50);
  m.Supprime(0);
  m.Supprime(1);
  m.AjouteBeaucoup(100, 40);
  m.Change(7, 60);
  m.Ferme();
  m.Ouvre();
  m.Ajoute(70);
  m.Supprime(5);
  for (unsigned i = 0; i < 4; ++i) m.Change(9 + i, 80 + i);
  m.Ferme();
}

/// Short enough for many cuts behind every sync that may fail. Several units change the same slots.
inline void PetiteHistoire(Machine& m) {
  m.Ouvre();
  m.Ajoute(10);
  m.Change(1, 20);
  m.Ajoute(30);
  m.Ferme();
  m.Ouvre();
  m.Change(2, 40);
  m.Ferme();
}

/// Units too large for the log: one in front of reused slots that finds everything at home, so that nobody
/// else's sync brings its tail there, and one behind others.
inline void GrandeHistoire(Machine& m) {
  m.Ouvre();
  m.Supprime(1);
  m.Vidange();
  m.AjouteBeaucoup(1000, 3500);
  m.Ajoute(20);
  m.Change(1700, 30);
  m.AjouteBeaucoup(5000, 3000);
  m.Ferme();
}

class Coupure : public testing::Test {
 protected:
  void SetUp() override {
    m_neuf = m_dossier.Chemin() + "/neuf";
    m_essai = m_dossier.Chemin() + "/essai/cabinet";
    ASSERT_NO_FATAL_FAILURE(CreeCabinet(m_neuf));
    const Comptes comptes = LitComptes(m_neuf);
    std::string entree;
    for (unsigned i = 0; i < 4; ++i)
      entree += LigneSaisie(comptes, false, "Depart " + std::to_string(i), 50 + i, 40 + i);
    const Resultat r = Ctl({"--cabinet", m_neuf, "saisir"}, entree);
    ASSERT_EQ(r.statut, 0) << r.sortie << r.erreurs;
    m_depart = LitLivres(m_neuf, m_modele);
    ASSERT_EQ(m_depart.size(), 4u);
  }

  /// Reads the books as they are on the disk; complaints go to the test, or only to
  /// `plainte` when it is given.
  Livres LitLivres(const std::string& cabinet, EcrSimple& modele, std::string* plainte = nullptr) {
    const auto plains = [&](const std::string& texte) {
      if (!plainte)
        ADD_FAILURE() << texte;
      else if (plainte->empty())
        *plainte = texte;
    };
    Livres livres;
    SystemeSansSynchro disque;
    OptionsQVAPI options;
    options.systeme = &disque;
    QVAPI m(options);
    if (!m.QVOpenSession(1) || !m.QVOpenCompta(cabinet, "") || !m.QVOpenExercice("2003") || !m.OpenPlan("") ||
        !m.OpenJournal("")) {
      plains("the practice does not open: " + VersUtf8(m.QVErreurTexte(m.QVFileErrorCode())));
      return livres;
    }
    for (const u16 fichier : {FichierJournal, FichierComptes}) {
      for (const std::string& anomalie : m.QVVerifie(fichier).anomalies)
        plains("verification: " + VersUtf8(anomalie));
    }
    std::map<u32, std::pair<f64, unsigned>> soldes;
    m.QVParcours(FichierJournal, [&](Position, const void* rec) {
      const Line& l = *static_cast<const Line*>(rec);
      const u32 mouvement = l.Mouvement;  // the record is packed: no reference to its fields
      soldes[mouvement].first += l.Sens ? l.MontantEuro : -l.MontantEuro;
      ++soldes[mouvement].second;
      return true;
    });
    for (const auto& [mouvement, solde] : soldes) {
      EcrSimple rec{};
      if (std::abs(solde.first) > 0.001 || solde.second != 3)
        plains("half an entry: " + std::to_string(mouvement));
      if (!m.ReadEcrSimple(m.PathExercice(), mouvement, rec))
        plains("unreadable entry " + std::to_string(mouvement));
      livres[mouvement] = {LitTexte(rec.Libelle), rec.MontantEuro};
      modele = rec;
    }
    // The totals that the saves kept are those that the lines give.
    const auto totaux = [&] {
      std::map<std::string, std::array<f64, 4>> t;
      m.QVParcours(FichierComptes, [&](Position, const void* rec) {
        const Plan& p = *static_cast<const Plan*>(rec);
        t[LitTexte(p.Compte)] = {+p.CreditEuro, +p.DebitEuro, +p.PersoEuro, +p.TVAEuro};
        return true;
      });
      return t;
    };
    const auto avant = totaux();
    Statistiques s{};
    if (!m.QVCalculCompta("2003", s)) plains("the recalculation failed");
    const auto apres = totaux();
    for (const auto& [compte, valeurs] : avant) {
      for (unsigned i = 0; i < valeurs.size(); ++i) {
        if (std::abs(valeurs[i] - apres.at(compte)[i]) > 0.001)
          plains("total " + std::to_string(i) + " of " + compte);
      }
    }
    return livres;
  }

  /// Spoils the keys the way a disk may: they are derived, nothing may depend on them.
  void GateCles(unsigned facon) {
    for (const char* nom : {"/2003/JOURNAL.idx", "/2003/COMPTES.idx"}) {
      const std::string chemin = m_essai + nom;
      if (!std::filesystem::exists(chemin)) continue;
      const std::string contenu = test::LitFichier(chemin);
      switch (facon % 5) {
        case 1:
          test::EcritFichier(chemin, std::string(contenu.size(), '\0'));
          break;
        case 2:
          test::EcritFichier(chemin, contenu.substr(0, contenu.size() / 2));
          break;
        case 3:
          std::filesystem::copy_file(m_neuf + nom, chemin, std::filesystem::copy_options::overwrite_existing);
          break;
        case 4:
          test::EcritFichier(chemin, contenu.substr(0, 4096) + std::string(contenu.size() / 2, '\x5A'));
          break;
        default:
          continue;
      }
      // On a fast machine the seal may be of the same tick: then the file would count as damaged, which is
      // told.
      std::filesystem::last_write_time(chemin,
                                       std::filesystem::last_write_time(chemin) + std::chrono::seconds(1));
    }
  }

  /// Runs a story with a cut at sync `n` and that fate. True when the cut came.
  /// A complaint goes to `plainte`.
  bool Essaie(void (*histoire)(Machine&), u64 n, u64 graine, const std::string& ignore, std::string& plainte,
              u64 manquee = 0, unsigned manquees = 1) {
    Recopie(m_neuf, m_essai);
    if (m_sansSommes) test::OteSommes(m_essai);
    bool coupee = false;
    Livres acquis, possible;
    {
      SystemeCoupure systeme(m_dossier.Chemin() + "/essai");
      systeme.IgnoreSynchro(ignore);
      systeme.CoupeApres(n);
      systeme.EchoueSynchro(manquee, manquees);
      {
        Machine machine(m_essai, systeme, m_reprise);
        machine.Commence(m_depart, m_modele);
        if (manquee) machine.Endure();
        histoire(machine);
        coupee = systeme.EstCoupe();
        if (machine.Arrete() && !coupee) {
          plainte = "stopped without a cut";
          return true;
        }
        acquis = machine.Acquis();
        possible = machine.Possible();
      }
      if (!systeme.Applique(graine)) {
        plainte = "the simulation failed";
        return true;
      }
    }
    GateCles(static_cast<unsigned>(n + graine));
    if (graine % 3 == 2) {
      // The power goes again while the practice recovers.
      SystemeCoupure systeme(m_dossier.Chemin() + "/essai");
      systeme.CoupeApres(1 + (n + graine) % 4);
      {
        Machine machine(m_essai, systeme);
        machine.Ouvre();
        machine.Ferme();
      }
      if (!systeme.Applique(graine * 31 + n)) plainte = "the simulation failed";
    }
    EcrSimple rec{};
    const Livres lus = LitLivres(m_essai, rec, &plainte);
    if (plainte.empty() && !(lus == acquis || lus == possible)) {
      plainte = "the books have " + std::to_string(lus.size()) + " entries; saved were " +
                std::to_string(acquis.size()) + ", or " + std::to_string(possible.size()) +
                " with the last unit";
    }
    return coupee;
  }

  /// All cuts of a story. Number of tries that found something.
  unsigned Joue(void (*histoire)(Machine&), unsigned graines, const std::string& ignore, bool silence,
                unsigned pas = 1) {
    unsigned essais = 0, mauvais = 0;
    u64 n = 1;
    for (bool coupee = true; coupee; n += pas) {
      for (u64 graine = 0; graine < graines; ++graine) {
        std::string plainte;
        coupee = Essaie(histoire, n, graine, ignore, plainte);
        ++essais;
        if (plainte.empty()) continue;
        ++mauvais;
        if (!silence) ADD_FAILURE() << "cut at sync " << n << ", fate " << graine << ": " << plainte;
        if (!silence && mauvais > 5) return mauvais;
      }
    }
    std::cout << essais << " cuts, " << mauvais << " with a finding\n";
    return mauvais;
  }

  DossierTemporaire m_dossier;
  std::string m_neuf, m_essai;
  Livres m_depart;
  EcrSimple m_modele{};
  std::size_t m_reprise = ReprisePetite;
  bool m_sansSommes = false;  ///< the practice is of the form before slots had sums
};

}  // namespace fenlor::pannes
