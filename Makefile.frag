# phpize's make knows no header dependencies; every object depends on every header.
sepa_headers := $(wildcard $(addprefix $(srcdir)/,*/*.h */*/*.h))
$(shared_objects_sepa): $(sepa_headers)

# The bank directory: lists -> tables -> the one object that includes them. The
# choice of a release is kept in a file, so that another choice is a change.
sepa_lists := $(addprefix $(srcdir)/directory/data/$(SEPA_DIRECTORY)/,de.csv at.csv ch.csv bic.csv)

directory/bank_directory.lo: generated/directory_tables.inc

generated/directory_tables.inc: generated/gen_directory generated/directory_choice.txt $(sepa_lists)
	generated/gen_directory $(srcdir)/directory/data/$(SEPA_DIRECTORY) $@

sepa_generator := $(srcdir)/tools/gen_directory.cpp $(srcdir)/tools/bank_lists.cpp
generated/gen_directory: $(sepa_generator) $(srcdir)/tools/bank_lists.h
	@mkdir -p generated
	$(CXX) -std=c++17 -O1 -I$(srcdir) $(sepa_generator) -o $@

generated/directory_choice.txt: sepa_always
	@mkdir -p generated
	@echo '$(SEPA_DIRECTORY)' | cmp -s - $@ || echo '$(SEPA_DIRECTORY)' > $@

.PHONY: sepa_always
