// The one table of texts: every message, title and format that a user reads has
// a number here. The numbers 3000 to 3121 are the error table; 3200 and above are
// this system's further refusals and questions; ids of 5000 and above are words
// and formats that several rules share.
#pragma once

#include <initializer_list>
#include <string>

namespace fenlor {

/// Text of a number, Windows-1252, as it stands; empty when unknown.
std::string Texte(unsigned numero);
/// True for a number of the table.
bool TexteExiste(unsigned numero);

/// Fills the text's format with arguments in order: %s, %d, %ld, %u, %%. Texts
/// are taken as they are; numbers are given as text by the caller.
std::string TexteFormat(unsigned numero, std::initializer_list<std::string> arguments);
std::string RemplitFormat(const std::string& format, std::initializer_list<std::string> arguments);

/// Text that `ReportErreur` shows for a number: the table's text filled in, or
/// "Erreur non répertoriée (identificateur inconnu : %u)".
std::string TexteErreur(unsigned numero, std::initializer_list<std::string> arguments);

/// Numbers of this system's own texts. The texts stand in textes_*.cpp.
enum TexteId : unsigned {
  // Refusals
  ErrLigneIllisible = 3200,      ///< "Ligne %s : %s" a line of JSON that cannot be read
  ErrModificationValidee = 3201, ///< "L'écriture \"%s\" est validée !\nLa modification est impossible."
  ErrEcritureInconnue = 3202,    ///< "L'écriture %s n'existe pas."
  ErrChampInconnu = 3203,        ///< "Le champ \"%s\" est inconnu."
  ErrChampManquant = 3204,       ///< "Le champ \"%s\" est obligatoire."
  ErrChampInvalide = 3205,       ///< "Le champ \"%s\" est incorrect : %s"
  ErrTexteTropLong = 3206,       ///< "Le champ \"%s\" est trop long : %s caractères au plus."
  ErrDebitEtCredit = 3207,       ///< "Une ligne porte un débit ou un crédit, pas les deux."
  ErrExerciceInconnu = 3208,     ///< "L'exercice %s n'existe pas."
  ErrAucunExercice = 3209,       ///< "Aucun exercice n'est ouvert."
  ErrMonnaieExercice = 3210,     ///< "L'exercice %s ne peut pas être tenu en %s."
  ErrNomExercice = 3211,         ///< "Le nom de l'exercice \"%s\" est incorrect : 1 à 4 lettres ou chiffres."
  ErrPeriode = 3212,             ///< "La période du %s au %s est incorrecte."
  ErrCabinetOccupe = 3213,       ///< "Ce cabinet est déjà ouvert (%s)."
  ErrMagasin = 3214,             ///< "%s" the store's own words
  ErrEcritureLiee = 3215,        ///< "L'écriture \"%s\" est liée à Quorbane et ne peut pas être modifiée ici."
  ErrReglages = 3220,            ///< "Les réglages n'ont pas pu être enregistrés dans %s : %s" path, reason
  ErrDateTauxExistante = 3230,
  ErrCabinet = 3216,             ///< "Le cabinet %s ne peut pas être ouvert : %s"
  ErrReglagesVides = 3217,       ///< settings that name no exercice though books are there: file, names
  ErrRaccourciPris = 3240,       ///< "%s est déjà le raccourci de \"%s\"." key, command
  ErrRaccourciInterdit = 3241,   ///< a key that forms or menus need
  ErrCodeReserve = 3250,         ///< code of a treasury account that is a section of the settings
  ErrCompteUtilise = 3251,       ///< deletion: short number, by what
  ErrCompteUtiliseChange = 3252, ///< another number or type: short number, by what
  ErrCompteMouvemente = 3253,    ///< another number or type
  ErrComptePersonnel = 3254,     ///< short number
  ErrBoucleRubrique = 3260,      ///< code; the codes on the way back to it
  ErrSansPdf = 3270,             ///< this fenlorctl writes no PDF
  ErrEtatAbsent = 3271,          ///< nothing to show: name of the report
  // Questions
  QuestionTresorerieChangee = 3300,   ///< "Le compte de trésorerie a été modifié.\nFaut-il continuer ?"
  QuestionNonEquilibree = 3301,       ///< "Attention ! L'ecriture n'est pas équilibrée. ..."
  QuestionSuppression = 3302,         ///< "Suppression de l'écriture\n\"%s\" ?"
  QuestionSuppressionRapprochee = 3303,
  QuestionRecetteFeuille = 3304,
  QuestionRecetteQuorbane = 3305,
  QuestionDepenseQuorbane = 3306,
  QuestionRecalcul = 3307,
  QuestionAjustementEuro = 3308,
  QuestionSupprimeExercice = 3309,
  InfoRecalcul = 3310,
  QuestionRapprocher = 3311,
  QuestionDerapprocher = 3312,
  QuestionValiderOD = 3313,        ///< date, label
  QuestionValiderStandard = 3314,  ///< date, label, "Crédit" or "Débit", amount
  QuestionValiderSimple = 3315,    ///< treasury code, then as above
  QuestionRenumerotation = 3316,
  QuestionEnregistrer = 3317,      ///< "Faut-il enregistrer cette écriture ?"
  QuestionInvalider = 3318,
  QuestionEditerLiee = 3319,
  QuestionNouveauCabinet = 3320,
  InfoCompteMouvemente = 3330,
  InfoTresorerieMouvementee = 3331,
  QuestionSupprimeCompte = 3332,      ///< short number
  QuestionSupprimeTresorerie = 3333,  ///< code
  QuestionSoldeCrediteur = 3334,      ///< yes: change it first
  QuestionCompteRecettes = 3340,      ///< which account to make: no is one of expenses
  InfoRubriqueUtilisee = 3345,
  QuestionSupprimeRubrique = 3346,    ///< code
  QuestionSupprimeLibelle = 3350,
  ErrLibelles = 3351,                 ///< path, reason
  ErrLibelleRefuse = 3352,            ///< blank, or not readable again
  QuestionEnregistrerVirement = 3375,
  QuestionRemplaceFraisKm = 3380,
  QuestionEcrituresVariable = 3381,   ///< number of entries, variable
  QuestionSupprimeFraisKm = 3382,
  // What is typed into the fields
  ErrMontantIllisible = 3400,    ///< what was typed
  ErrMontantBornes = 3401,       ///< what was typed; smallest, largest
  ErrLigneRubrique = 3402,       ///< what was typed
  InfoTermesInconnus = 3403,     ///< code of the heading; the terms
  QuestionAnneesExercice = 3404, ///< name, first and last day
  QuestionRenumeroterPartie = 3430,   ///< number of entries that are not shown
  ErrSerie = 3431,                    ///< commands on a selection: number of refusals, the first one
  // Titles
  TitreApplication = 5000,      ///< "Fenlor"
  FormatTitreErreur = 5001,     ///< "%s - Erreur (%u)"
  FormatTitreTexte = 5002,      ///< "%s - Erreur"
  FormatErreurInconnue = 5003,
  // Messages of the indexed files, shown inside 3049
  MessageCreation = 5010,
  MessageLecture = 5011,
  MessageEcriture = 5012,
  MessageSuppression = 5013,
  MessageAjoutCle = 5014,        ///< index of the key
  MessageSuppressionCle = 5015,  ///< index of the key
  // Progress
  TitreReconstruction = 5020,
  TexteReconstruction = 5021,    ///< store name
  TitreCalculCumuls = 5022,
  TexteMiseAZeroPlan = 5023,
  TexteRecalculCumuls = 5024,
  TitreMontantsEuros = 5025,
  TexteTraitement = 5026,        ///< "Traitement en cours..."
  TexteRenumerotation = 5027,
  TitreValidation = 5028,
  TexteValidation = 5029,
  // Files in the list of the key rebuild
  FichierListeBanques = 5030,
  FichierListeComptes = 5031,
  FichierListeJournal = 5032,
  FichierListeRubriques = 5033,
  FichierListeImmo = 5034,
  FichierListeAmo = 5035,
  // Words
  MotOui = 5339,  ///< "Oui"
  MotNon = 5340,  ///< "Non"
  MotCredit = 5341,
  MotDebit = 5342,
  MotFranc = 5343,
  MotEuro = 5344,
  MotRecettes = 5345,  ///< name of journal 1; 2 and 3 follow
  MotDepenses = 5346,
  MotOperationsDiverses = 5347,
  MotCheque = 5348,
  MotAutre = 5349,
  // Sections of the settings file
  SecActivite = 5400,
  SecPreferences = 5401,
  SecFenlor = 5402,
  SecComptes = 5403,
  SecTauxEuro = 5404,
  SecRapprochement = 5405,
  SecIntl = 5406,  ///< of the machine's registry
  // Keys of an exercice's section
  CleCloture = 5410,
  CleTVA = 5411,
  CleEuro = 5412,
  CleAfficherDouble = 5413,
  CleFraisKm = 5414,
  CleDebut = 5415,
  CleFin = 5416,
  // Keys of the other sections
  CleExercice = 5417,
  CleExercices = 5418,
  CleBrouillon = 5420,
  ClePrevisualisation = 5421,
  CleVirgule = 5422,
  CleEntree = 5423,
  CleFinDeSession = 5424,
  CleCouleurSysteme = 5425,
  ClePoliceDefaut = 5426,
  CleModeDebug = 5427,
  CleLimiteFranc = 5428,
  CleZeroDansBoite = 5429,
  CleZerosSignificatifs = 5430,
  CleNombreChiffres = 5431,
  CleSauverFenetres = 5432,
  CleRestaurerFenetres = 5433,
  CleEspeces = 5434,
  ClePrelevement = 5435,
  CleSDecimal = 5436,
  // Lists
  CleColonnes = 5600,
  // Preferences and positions of windows
  CleCouleurBordures = 5640,
  CleCouleurImpaire = 5641,
  CleCouleurPaires = 5642,
  CleCouleurFond = 5643,
  ClePoliceListes = 5644,
  ClePoliceJournaux = 5645,
  ClePoliceValidees = 5646,
  ClePoliceSaisies = 5647,
  ClePoliceTextes = 5648,
  ClePoliceMois = 5649,
  ClePoliceImpressions = 5650,
  CleFenetre = 5651,
  CleAgrandie = 5652,
  PoliceParDefaut = 5653,
  FormatPolice = 5654,  ///< "%s, %d, %ld, %d, %d, %d, %d"
  FormatPosition = 5655,  ///< "%d, %d, %d, %d"
  FormatPourcent = 5656,  ///< "%d%%"
  MotGras = 5657,
  MotItalique = 5658,
  MotSouligne = 5659,
  MotBarre = 5660,
  PoliceSysteme = 5661,
  ExemplePolice = 5662,  ///< "AaBbCcXxYyZz"
  InfoMotDePasseSupprime = 5680,
  CleVersion = 5681,  ///< also a value of the registry
  CleRevision = 5682,
  CleBuild = 5683,
  CleMotDePasseCabinet = 5684,
  SecBarreOutils = 5685,
  SecBarreOutilsSummary = 5686,
  FormatSecBarreOutils = 5687,
  QuestionRecetteSansExercice = 5688,  ///< save, change, delete (5688, 5690, 5692), the next number of an expense
  CleRegistreFenlor = 5694,
  CleRegistreTessamaris = 5695,
  CleRegistreQuorbaneSpeciale = 5696,
  CleRegistreQuorbane = 5697,
  CleRegistreSesam = 5698,
  CleSpecialite = 5699,
  ListeSpecialites = 5700,
  FormatFichierReconstruit = 5701,  ///< store name, number
  FormatReconstruitEcartes = 5702,
  FormatReconstruitRemplaces = 5703,
  FormatReconstruitInconnus = 5704,
  FormatReconstruitCopie = 5705,
  FormatReconstruitCles = 5706,
  InfoReconstruction = 5707,
  FormatReconstruitVierges = 5708,
  FormatReconstruitRestants = 5709,
  MotFichierEndommage = 5710,
  SecAssociation = 5720,
  SecComptable = 5721,
  Sec2035 = 5722,
  SecMiseAJour = 5723,  ///< of the user's registry
  CleIdentification = 5724,
  CleSiret = 5725,
  CleApe = 5726,
  CleNatureActivite = 5727,
  CleNumeroAssociation = 5728,
  CleAnneeAssociation = 5729,
  CleRadicalTva = 5730,
  CleCompteBancaire = 5731,  ///< of the section of a bank account
  CleVirementRecette = 5732,
  CleVirementDepense = 5733,
  CleEcartCredit = 5734,
  CleEcartDebit = 5735,
  Cle2035Recettes = 5740,  ///< Depenses, Résultat, T.V.A. follow
  Lignes2035Recettes = 5744,  ///< first and last line; the three others follow
  CleModeMiseAJour = 5750,
  CleJoursMiseAJour = 5751,
  CleApplicationMiseAJour = 5752,
  ApplicationMiseAJour = 5753,  ///< default of the above
  RadicalTvaDefaut = 5754,
  FormatDesignationTva = 5755,
  FormatCodeTva = 5756,
  FormatTaux = 5757,
  ColonnesAdressesBanque = 5760,
  ColonnesTauxTva = 5761,
  ColonnesTauxEuro = 5762,
  // Desk tools
  FichierAstuces = 5800,
  SecAstuce = 5801,           ///< of the user's registry
  ClePosition = 5802,
  CleDemarrage = 5803,
  SecCalculatrice = 5804,     ///< position of the window
  SecAide = 5805,             ///< position of the window
  CalculErreur = 5806,        ///< shown by the calculator
  CalculTaux = 5807,          ///< rate
  CalculPasNombre = 5808,
  FormatAstuce = 5809,        ///< number of the tip, number of tips
  AideRienTrouve = 5810,      ///< what was searched
  InfoInconnu = 5811,
  InfoMemoire = 5812,         ///< total, free
  InfoEcran = 5813,           ///< width, height, scale
  InfoDisque = 5814,          ///< free, total
  InfoKo = 5815,
  FormatVersion = 5816,
  InfoCopie = 5817,
  // Main window
  // Bars and shortcuts
  CleEtatBarres = 5830,
  CleBarreEtat = 5831,
  CleCommandesBarre = 5832,
  CleTailleIcones = 5833,
  CleTextesIcones = 5834,
  MotTexteDessous = 5835,
  MotTexteACote = 5836,
  MotTexteSans = 5837,
  SecRaccourcis = 5838,
  AccueilExercice = 5850,  ///< name of the exercice
  AccueilQueFaire = 5851,
  AccueilCloture = 5852,
  AccueilBienvenue = 5853,
  AccueilPremier = 5854,
  AccueilAucun = 5855,
  AccueilChoisir = 5856,
  CleFenetresOuvertes = 5857,
  FormatTitreExercice = 5858,  ///< product, "Exercice", name
  MotExercice = 5859,
  TitreDemo = 5860,
  TexteDemo = 5861,
  // Accounts
  SecTresorerie = 5870,
  CleClasse = 5871,
  CleRadicalBanque = 5872,
  CleRadicalCaisse = 5873,
  RadicalBanqueDefaut = 5874,
  RadicalCaisseDefaut = 5875,
  SecFraisKm = 5876,
  ColonnesPlan = 5880,  ///< single display; both currencies follow
  ColonnesPlanDouble = 5881,
  ColonnesTresorerie = 5882,
  ColonnesTresorerieDouble = 5883,
  FormatChoixTva = 5884,  ///< rate, code, short number
  MotComptesParticuliers = 5890,  ///< what uses an account
  FormatCompteAvecTva = 5891,     ///< short number
  MotOperationsBancaires = 5892,
  MotEcritureAutomatique = 5893,
  // Windows of the accounts
  TitreCompte = 5900,       ///< code; of treasury, then one for each type
  TitreAjoutCompte = 5905,  ///< of treasury; receipts and expenses follow
  TitreAjoutAuPlan = 5908,
  TitreComptesRecettes = 5909,
  TitreComptesDepenses = 5910,
  TitreComptesTresorerie = 5911,
  TitrePlanComptable = 5912,
  // Headings
  TitreRubriques = 5930,
  ColonnesRubriques = 5931,
  TitreRubrique = 5932,  ///< code
  TitreAjoutRubrique = 5933,
  ColonnesComptesAssocies = 5934,
  FormatCompteAssocie = 5935,  ///< short number, designation
  // Labels
  FichierLibelles = 5950,
  FichierLibellesProvisoire = 5951,
  LigneLibelles = 5952,  ///< first line of the file
  ColonnesLibelles = 5953,
  TitreLibelles = 5954,
  TitreAjoutLibelle = 5955,
  TitreModificationLibelle = 5956,
  // Commands on many entries, transfer
  LibelleVirement = 6030,  ///< label of a transfer
  // Windows of the journals
  TitreJournal = 6050,        ///< of receipts; expenses and opérations diverses follow, here and below
  FormatTitreJournal = 6053,  ///< word for the mode
  MotModeListe = 6056,        ///< validated, draft, all
  CleJournal = 6059,
  NomDuJournal = 6062,
  FormatVueJournal = 6065,    ///< account, index of the month, mode, 1 when one row an entry
  FormatVueJournalOD = 6066,
  FormatEnteteJournal = 6067,  ///< name of the journal
  FormatMoisJournal = 6068,    ///< month, year
  FormatMoisPartiel = 6069,
  MotTousComptes = 6070,
  MoisAbreges = 6071,
  MotTotal = 6072,
  MotTotalSelection = 6073,
  TitresJournal = 6074,  ///< of all columns but the marks
  LettresMarques = 6075,
  MotsMarques = 6076,
  FormatTotal = 6077,
  FormatLigneJournal = 6078,
  FormatJourJournal = 6079,
  VideMois = 6080,  ///< shown in place of rows
  VideCriteres = 6081,
  VideMode = 6082,  ///< of the mode, as above
  VideTresorerie = 6085,
  VideAjouter = 6086,
  // Forms of entries
  TitreEcriture = 6100,         ///< what, and "ajout" or "modification"
  TitreRecette = 6101,
  TitreDepense = 6102,
  TitreLigneTresorerie = 6103,
  MotAjout = 6104,
  MotModification = 6105,
  ColonnesTresor = 6106,
  AucuneLigneTresor = 6107,
  TitreOD = 6130,
  TitreLigneOD = 6131,
  ColonnesOD = 6132,
  // Periods
  ClePeriode = 6160,
  FormatSemaine = 6161,  ///< first and last day
  FormatMoisAnnee = 6162,  ///< year, name of the month
  // Report engine
  EtatTitreIdentite = 6300,  ///< markup of a page's title: name, company
  EtatTitrePage = 6301,      ///< date, title, page, pages
  EtatSansTexte = 6302,
  ErrEtatPlacement = 6303,
  ErrEtatLecture = 6304,
  ErrEtatMemoire = 6305,
  ErrEtatEcriture = 6306,    ///< the store's words
  // Kilometre expenses
  CleKmCompteur = 6350,
  CleKmAncien = 6351,
  CleKmDernier = 6352,
  CleKmDistance = 6353,
  CleKmBorneInf = 6354,
  CleKmBorneSup = 6355,
  CleKmFixe = 6356,
  CleKmFixeEuro = 6357,
  CleKmTaux = 6358,      ///< Franc, first tier; the two others follow
  CleKmTauxEuro = 6361,  ///< likewise
  VariableFraisKm = 6364,
  FormatTrancheInf = 6365,     ///< lower bound
  FormatTrancheMilieu = 6366,  ///< lower bound plus 1, upper bound
  FormatTrancheSup = 6367,     ///< upper bound
  // Printing and preview
  ErrPdf = 6430,               ///< path, reason
  ErrImpression = 6431,        ///< name of the printer
  AvancementPdf = 6432,
  AvancementImpression = 6433,
  TitreApercu = 6434,          ///< section of the window's place
  FormatTitreApercu = 6435,    ///< report
  FormatPageApercu = 6436,     ///< page, pages
  FormatPagesApercu = 6437,    ///< first, last, pages
  CleMiseEnPage = 6438,
  FormatMiseEnPage = 6439,     ///< paper, orientation, four margins in tenths of a millimetre
  TitreExportPdf = 6440,
  FiltrePdf = 6441,
  // Form of the kilometre expenses
  TitreFraisKm = 6450,
  // Reports of the lines: detail, extract, general ledger
  TitreEtatDetail = 7000,
  AvancementEtatDetail = 7001,
  EnteteEtatDetail = 7002,  ///< Franc; Euro, both
  PiedEtatDetail = 7005,
  SectionEtatDetail = 7006,  ///< of receipts: period, centralisation; of expenses, of opérations diverses: period
  MotCentralisation = 7009,  ///< by `CentralisationEtat`
  RangeeEtatDetail = 7013,  ///< one currency; both follows, here and below
  TotalMoisEtatDetail = 7015,  ///< month
  TotalEtatDetail = 7017,
  TitreEtatExtrait = 7020,
  AvancementEtatExtrait = 7021,
  PiedEtatExtrait = 7022,  ///< of the general ledger too
  CompteEtatExtrait = 7023,  ///< kind, short number, designation, period; of the general ledger too
  MotCompteTva = 7024,  ///< beside the words of `MotNatureCompte`
  EnteteEtatExtrait = 7025,  ///< credit and debit in one currency, in both; amount in one, in both
  RangeeEtatExtrait = 7029,  ///< credit and debit in one currency, in both; amount
  TotalEtatExtrait = 7032,  ///< likewise
  TitreGrandLivre = 7040,
  AvancementGrandLivre = 7041,
  EnteteGrandLivre = 7042,  ///< as `EnteteEtatExtrait`
  RangeeGrandLivre = 7046,  ///< credit and debit; amount follows, here and below
  TotalMoisGrandLivre = 7048,
  TotalGrandLivre = 7050,
  // Reports of the journal, balance, centralisation, VAT, reconciled lines
  AvancementEtatJournal = 7100,
  EnteteEtatJournal = 7101,  ///< of entries; of lines follows, here and below
  RangeeEtatJournal = 7103,
  TotalEtatJournal = 7105,
  PiedEtatJournal = 7107,
  MoisEtatJournal = 7108,  ///< month, year, code of the account; of a narrowed list follows, here and below
  MoisEtatJournalOD = 7110,
  TitreEtatBalance = 7120,
  AvancementBalance = 7121,
  PiedBalance = 7122,  ///< of the VAT report too
  EnteteBalance = 7123,  ///< Franc; Euro, both
  ClasseBalance = 7126,
  RangeeBalance = 7127,
  TotalClasse = 7128,
  TotalBilan = 7129,
  TotalExploitation = 7130,
  TotalBalance = 7131,
  TitreEtatCentralisation = 7140,
  AvancementCentralisation = 7141,
  PiedCentralisation = 7142,  ///< of the report of reconciled lines too
  PeriodeCentralisation = 7143,  ///< of the report of reconciled lines too
  CompteCentralisation = 7144,  ///< kind, short number, designation
  MotNatureCompte = 7145,  ///< by `Plan::Type`
  TableauMois = 7150,  ///< heading, row, total: credit and debit, the same in both currencies; amount, both
  TitreEtatTva = 7165,
  AvancementEtatTva = 7166,
  EnteteEtatTva = 7167,  ///< one currency; both follows, here and below
  CompteEtatTva = 7169,  ///< short number, designation, period
  RangeeEtatTva = 7170,
  TotalEtatTva = 7172,
  TitreEtatRapprochement = 7180,
  AvancementRapprochement = 7181,
  EnteteRapprochement = 7182,  ///< one currency; both follows
  RangeeRapprochement = 7184,
  TotalRapprochement = 7185,
  // Fiscal statement
  TitreEtat2035 = 7200,  ///< exercice
  AvancementEtat2035 = 7201,
  Etat2035Resultat = 7202,
  Etat2035Mois = 7203,
  Etat2035Annexe = 7204,
  Etat2035Declarant = 7205,
  Etat2035Activite = 7206,     ///< nature, beginning
  Etat2035Association = 7207,  ///< number, year
  Etat2035Ligne = 7208,        ///< number, designation, code, two amounts
  VariableAmortissements = 7209,
  VariablePlusValues = 7210,
  VariableMoinsValues = 7211,
  VariableImmobilisations = 7212,
  AvisBoucles2035 = 7213,  ///< one loop a line
  // Lists on paper
  PiedListe = 7220,
  FinListe = 7221,
  AvancementListeComptes = 7222,
  EnteteListeComptes = 7223,
  LigneListeComptes = 7224,
  TotalListeComptes = 7225,
  AvancementListeTresorerie = 7226,
  EnteteListeTresorerie = 7227,
  PiedListeTresorerie = 7228,
  LigneListeTresorerie = 7229,
  TotalListeTresorerie = 7230,
  AvancementListeRubriques = 7231,
  EnteteListeRubriques = 7232,
  LigneListeRubriques = 7233,
  AvancementListeLibelles = 7234,
  EnteteListeLibelles = 7235,
  LigneListeLibelles = 7236,
  // Form of the criteria
  MotGenre = 7300,         ///< by `GenreEtat`
  MotGroupeComptes = 7304, ///< by the bit of `MasqueComptes`
  FormatCompteChoisi = 7309,  ///< short number, designation
  // Fields of the forms of entries, as their labels name them
  NomChampTtc = 7400,
  NomChampProfessionnel = 7401,
  NomChampTva = 7402,
  NomChampMontant = 7403,
  NomChampDebit = 7404,
  NomChampCredit = 7405,
  NomChampLibelle = 7406,
  NomChampCode = 7407,  ///< of the forms of accounts and headings
  NomChampCompte = 7408,
  NomChampDesignation = 7409,
  NomChampRubrique = 7410,
  NomChampFormule = 7411,
};

}  // namespace fenlor
