# phpize's make knows no header dependencies; every object depends on every header.
sepa_headers := $(wildcard $(addprefix $(srcdir)/,src/sepa/*/*.h src/sepa/*/*/*.h tools/*.h))
$(shared_objects_sepa): $(sepa_headers)

# The bank directory: lists -> tables -> the one object that includes them. The
# chosen release is kept in a file, so that another one is a change.
sepa_release := $(shell sh $(srcdir)/tools/choose_release.sh '$(SEPA_DIRECTORY)')
sepa_lists := $(addprefix $(srcdir)/data/$(sepa_release)/,de.csv at.csv ch.csv bic.csv)

src/sepa/directory/bank_directory.lo: generated/directory_tables.inc

generated/directory_tables.inc: generated/gen_directory generated/directory_choice.txt $(sepa_lists)
	generated/gen_directory $(srcdir)/data/$(sepa_release) $@

# It runs on the machine that builds, whatever machine the module is for.
sepa_generator := $(addprefix $(srcdir)/tools/,gen_directory.cpp cell_tables.cpp bank_lists.cpp list_text.cpp files.cpp)
generated/gen_directory: $(sepa_generator) $(sepa_headers)
	@mkdir -p generated
	$(CXX_FOR_BUILD) -std=c++17 -O1 -I$(srcdir)/src $(sepa_generator) -o $@

generated/directory_choice.txt: sepa_always
	@mkdir -p generated
	@echo '$(sepa_release)' | cmp -s - $@ || echo '$(sepa_release)' > $@

.PHONY: sepa_always
