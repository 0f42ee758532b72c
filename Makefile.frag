# phpize's make knows no header dependencies; every object depends on every header.
sepa_headers := $(wildcard $(addprefix $(srcdir)/,*/*.h */*/*.h))
$(shared_objects_sepa): $(sepa_headers)
